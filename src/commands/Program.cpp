#include "commands/Program.h"

#include "base/Session.h"
#include "base/Version.h"
#include "commands/Command.h"
#include "commands/CommandFailure.h"
#include "commands/Login.h"
#include "db/DbError.h"
#include "db/Refusal.h"

#include <algorithm>

namespace {

constexpr auto programName = "zelvan-schedules";

QString overview() {
    QString text = QString("Usage: %1 <command> [options] [arguments]\n"
                           "Works with the Scheduler's schedules and templates from a command line.\n\n"
                           "Commands:\n")
                       .arg(programName);
    for (const Command& command : commands())
        text += QString("  %1%2\n").arg(command.name.leftJustified(11), command.summary);
    return text
           + QString("\n%1 <command> --help tells a command's options, %1 --version the version.\n")
                 .arg(programName);
}

const Command& commandOf(const QString& name) {
    const auto found = std::ranges::find(commands(), name, &Command::name);
    if (found == commands().end())
        throw CommandFailure(
            ExitCode::WrongUse,
            QString("There is no command '%1'. %2 --help lists them.").arg(name, programName));
    return *found;
}

void prepare(QCommandLineParser& parser, const Command& command) {
    parser.setApplicationDescription(command.summary);
    if (!command.argument.isEmpty())
        parser.addPositionalArgument(command.argument, command.argumentHelp, command.argument);
    parser.addOptions(command.options);
    parser.addOptions(commonOptions());
}

/// The toolkit's text knows nothing of commands.
QString helpOf(const QCommandLineParser& parser, const Command& command) {
    QString help = parser.helpText();
    const QStringList usage{"Usage:", programName, command.name, "[options]", command.argument};
    return help.replace(0, help.indexOf('\n'), usage.join(' ').trimmed());
}

/// The arguments behind the command's name.
QStringList checkedArguments(const QCommandLineParser& parser, const Command& command) {
    const QStringList arguments = parser.positionalArguments().mid(1);
    const QString help = QString(" %1 %2 --help tells more.").arg(programName, command.name);
    if (arguments.size() < command.fewest)
        throw CommandFailure(ExitCode::WrongUse,
                             QString("The command needs %1.").arg(command.argument) + help);
    if (arguments.size() > command.most)
        throw CommandFailure(ExitCode::WrongUse,
                             QString("There is an argument too many, '%1'.").arg(arguments[command.most])
                                 + help);
    return arguments;
}

ExitCode runCommand(const QStringList& arguments, Session& session, Console& console,
                    const std::function<bool(std::chrono::milliseconds)>& pause) {
    refusePasswordArguments(arguments);
    const QString first = arguments.value(0);
    if (first == "--version") {
        console.write(QString("%1 %2\n").arg(programName, programVersion));
        return ExitCode::Done;
    }
    if (first.isEmpty() || first == "--help" || first == "-h" || first == "help") {
        first.isEmpty() ? console.tell(overview()) : console.write(overview());
        return first.isEmpty() ? ExitCode::WrongUse : ExitCode::Done;
    }
    const Command& command = commandOf(first);
    QCommandLineParser parser;
    prepare(parser, command);
    const bool parsed = parser.parse(QStringList{programName} + arguments);
    if (parsed && parser.isSet("help")) {
        console.write(helpOf(parser, command));
        return ExitCode::Done;
    }
    if (!parsed) throw CommandFailure(ExitCode::WrongUse, parser.errorText());
    CommandContext context{session, console, parser, checkedArguments(parser, command), pause};
    logIn(session, console, parser);
    return command.run(context);
}

QString inWords(const DbError& error) {
    if (error.number() == DbError::Stopped) return "Stopped. What was begun on the server is undone.";
    if (error.number() == DbError::StoppedCommit)
        return "Stopped while it was saving. Whether the change was carried out is not known: please look "
               "before "
               "you try again.";
    if (error.connectionLost())
        return "The connection to the server was lost: " + error.text()
               + " Whether a change was carried out is not known: please look before you try again.";
    return error.text();
}

/// The same, with all that can go wrong told.
ExitCode runGuarded(const QStringList& arguments, Session& session, Console& console,
                    const std::function<bool(std::chrono::milliseconds)>& pause) {
    try {
        return runCommand(arguments, session, console, pause);
    } catch (const CommandFailure& failure) {
        console.tell(failure.text());
        return failure.code();
    } catch (const Refusal& refusal) {
        console.tell(QString(refusal.text()).replace('\n', ' ')); // some hold titles
        return ExitCode::Refused;
    } catch (const DbError& error) {
        console.tell(inWords(error));
        if (error.number() == DbError::Stopped || error.number() == DbError::StoppedCommit)
            return ExitCode::Interrupted;
        session.log.write(programName, error);
        return ExitCode::Failed;
    } catch (const std::exception& error) {
        console.tell(QString::fromUtf8(error.what()));
        return ExitCode::Failed;
    }
}

} // namespace

ExitCode runProgram(const QStringList& arguments, Session& session, Console& console,
                    const std::function<bool(std::chrono::milliseconds)>& pause) {
    const ExitCode code = runGuarded(arguments, session, console, pause);
    if (console.problem().isEmpty()) return code;
    console.tell(QString("The answer could not be written: %1.").arg(console.problem()));
    return code == ExitCode::Done ? ExitCode::Failed : code;
}
