#pragma once

#include "commands/Command.h"

/// Both make the row that the schedule editor would make, with its checks.
ExitCode addSchedule(CommandContext& context);
ExitCode runSchedule(CommandContext& context);
