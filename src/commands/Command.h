#pragma once

#include "commands/Console.h"
#include "commands/ExitCode.h"

#include <QCommandLineParser>
#include <chrono>
#include <functional>

struct Session;

/// An option's value. Throws CommandFailure where none is given.
QString neededOption(const QCommandLineParser& parser, const char* option);

/// What a command works with, once its user is logged in.
struct CommandContext {
    Session& session;
    Console& console;
    const QCommandLineParser& parser;
    QStringList arguments; ///< behind the command's name
    /// Between two looks at the server; false when the user does not want to wait any longer.
    const std::function<bool(std::chrono::milliseconds)>& pause;

    bool isSet(const char* option) const { return parser.isSet(option); }
    QString value(const char* option) const { return parser.value(option); }
    QString needed(const char* option) const { return neededOption(parser, option); }
};

/// One word of the program's language.
struct Command {
    QString name;
    QString summary;
    QString argument = {}; ///< as help names it, "[word...]"; empty for none
    QString argumentHelp = {};
    int fewest = 0; ///< arguments
    int most = 0;
    QList<QCommandLineOption> options = {}; ///< beside those that all have
    ExitCode (*run)(CommandContext& context);
};

/// All of them, in the order in which help lists them.
const QList<Command>& commands();
/// The options that all commands have.
const QList<QCommandLineOption>& commonOptions();
