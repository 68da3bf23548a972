#pragma once

#include "commands/ExitCode.h"

#include <QStringList>
#include <chrono>
#include <functional>

class Console;
struct Session;

/// Runs one command line, from its arguments to its exit status: reads them, logs in, lets the command work,
/// and tells what stood against it. `pause` is CommandContext's.
ExitCode runProgram(const QStringList& arguments, Session& session, Console& console,
                    const std::function<bool(std::chrono::milliseconds)>& pause);
