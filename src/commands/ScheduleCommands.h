#pragma once

#include "commands/Command.h"

ExitCode listSchedules(CommandContext& context);
ExitCode showSchedule(CommandContext& context);
