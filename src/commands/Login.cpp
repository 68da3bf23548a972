#include "commands/Login.h"

#include "app/Terminal.h"
#include "app/cLogin.h"
#include "base/Session.h"
#include "commands/Command.h"
#include "commands/CommandFailure.h"
#include "db/DbError.h"
#include "db/ForeignText.h"
#include "db/SchedulerDatabase.h"
#include "db/wipe.h"

#include <QCommandLineParser>
#include <QFile>
#include <QRegularExpression>
#include <QScopeGuard>

namespace {

constexpr auto passwordVariable = "ZELVAN_SCHEDULER_PASSWORD";

QString passwordOfFile(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw CommandFailure(
            ExitCode::NotLoggedIn,
            QString("The password file '%1' cannot be read: %2.").arg(path, file.errorString()));
    return foreignLines(file.readLine()).value(0);
}

/// Unseen, where somebody types it.
QString passwordOfInput(Console& console) {
    if (!console.inputIsTerminal()) return console.readLine();
    setEcho(false);
    const auto seen = qScopeGuard([] { setEcho(true); });
    console.tell("Password:");
    return console.readLine();
}

QString readPassword(Console& console, const QCommandLineParser& parser) {
    const bool ofInput = parser.isSet("password-stdin");
    const bool ofFile = parser.isSet("password-file");
    if (ofInput && ofFile)
        throw CommandFailure(ExitCode::WrongUse, "Give one of --password-stdin and --password-file.");
    const QString password = ofInput  ? passwordOfInput(console)
                             : ofFile ? passwordOfFile(parser.value("password-file"))
                                      : qEnvironmentVariable(passwordVariable);
    if (password.isEmpty())
        throw CommandFailure(ExitCode::NotLoggedIn,
                             QString("There is no password: give it by --password-stdin, --password-file or "
                                     "the environment variable %1.")
                                 .arg(passwordVariable));
    return password;
}

} // namespace

void refusePasswordArguments(const QStringList& arguments) {
    static const QRegularExpression looksSo(
        "^(-p.*|--?(pass|passwd|pwd|password)(=.*)?|--password-stdin=.*)$",
        QRegularExpression::CaseInsensitiveOption | QRegularExpression::DotMatchesEverythingOption);
    const bool loginLine = arguments.value(0).count(',') >= 2; // as the window's program takes one
    for (const QString& argument : arguments) {
        if (argument == "--") return;
        if (loginLine || looksSo.match(argument).hasMatch())
            throw CommandFailure(
                ExitCode::WrongUse,
                QString("A password is not taken from the arguments, where every user of the machine sees it "
                        "and the shell keeps it: use --password-stdin, --password-file or the environment "
                        "variable %1.")
                    .arg(passwordVariable));
    }
}

void logIn(Session& session, Console& console, const QCommandLineParser& parser) {
    const QString server = neededOption(parser, "server").trimmed();
    const QString user = neededOption(parser, "user");
    QString password = readPassword(console, parser);
    const auto forget = qScopeGuard([&] { wipe(password); });
    bool lacksDatabase = false;
    const auto createNone = [&] {
        lacksDatabase = true;
        return false;
    };
    // A script may log in every minute: it must not purge what somebody excludes for a new template.
    const LoginOutcome outcome =
        cLogin(session, createNone, OrphanedNumbers::Keep).logIn(server, user, password);
    if (lacksDatabase)
        throw CommandFailure(ExitCode::NotLoggedIn,
                             "The server holds no scheduler database yet. The first login in the Scheduler's "
                             "window creates it.");
    if (outcome.result == LoginOutcome::Stay && outcome.message.isEmpty()) throw DbError::stopped();
    if (outcome.result != LoginOutcome::Done)
        throw CommandFailure(ExitCode::NotLoggedIn, (outcome.message + '\n' + outcome.details).trimmed());
    upgradeAtMainScreen(session.db());
}
