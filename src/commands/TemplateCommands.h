#pragma once

#include "commands/Command.h"

ExitCode listTemplates(CommandContext& context);
