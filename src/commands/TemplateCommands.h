#pragma once

#include "commands/Command.h"

ExitCode listTemplates(CommandContext& context);
ExitCode exportTemplates(CommandContext& context);
ExitCode importTemplates(CommandContext& context);
