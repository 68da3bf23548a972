#pragma once

#include "commands/Command.h"

ExitCode listSchedules(CommandContext& context);
ExitCode showSchedule(CommandContext& context);
ExitCode showLog(CommandContext& context);
/// Both ask first, and both refuse what the main screen refuses.
ExitCode resetSchedule(CommandContext& context);
ExitCode deleteSchedule(CommandContext& context);
