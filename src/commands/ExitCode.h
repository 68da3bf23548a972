#pragma once

/// What the program's exit status says; its man page explains them to scripts.
enum class ExitCode {
    Done = 0,
    Failed = 1,          ///< the server or a file
    WrongUse = 2,        ///< of commands, arguments and options
    NotLoggedIn = 3,     ///< no password, or the login was refused
    NotFound = 4,        ///< nothing, or more than one, of that name
    Refused = 5,         ///< by one of the program's own checks
    EndedWithErrors = 6, ///< the schedule that was waited for
    Interrupted = 130,   ///< by Ctrl+C, as shells have it
};
