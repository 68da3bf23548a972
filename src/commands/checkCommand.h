#pragma once

#include "commands/Command.h"

/// The login has made its own checks; this tells what it found, and reads what every other command reads.
ExitCode checkServer(CommandContext& context);
