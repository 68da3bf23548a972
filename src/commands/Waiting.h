#pragma once

#include "commands/Command.h"

struct SeenSchedule;

/// Writes all about a schedule, its log in one line.
void tellSchedule(CommandContext& context, const SeenSchedule& schedule);
/// Looks every few seconds until a schedule has ended, and writes it then. What happens meanwhile, a server
/// that is away included, is told beside the data.
ExitCode waitForEnd(CommandContext& context, int id);
