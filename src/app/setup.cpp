#include "app/SecurityFile.h"
#include "app/Terminal.h"
#include "db/ForeignText.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QScopeGuard>
#include <QTextStream>
#include <csignal>
#include <cstdlib>

namespace {

enum ExitCode { Written = 0, WrongUse = 1, NoPassword = 2, NotWritten = 3 };

void say(const QString& words) {
    QTextStream(stderr) << words << Qt::endl;
}

/// One line of standard input; empty at its end.
QString readLine() {
    static const std::unique_ptr<QIODevice> input = standardInput();
    return foreignLines(input->readLine()).value(0);
}

QString ask(const QString& question) {
    setEcho(false); // before the question: it forgets what was typed until then
    QTextStream(stderr) << question << Qt::flush;
    QString answer = readLine();
    setEcho(true);
    say({});
    return answer;
}

int writeFile(const QString& path, const QString& password) {
    try {
        WriteEncryptedSSSfile(path, password);
    } catch (const std::runtime_error& error) {
        say(error.what());
        return NotWritten;
    }
    say(QString("Written: %1\nSee to it that those who run the Scheduler, and nobody else, can read it.")
            .arg(QDir::toNativeSeparators(path)));
#ifdef Q_OS_WIN
    say(QString("For a group of users, as an administrator: icacls \"%1\" /grant \"<group>:R\"")
            .arg(QDir::toNativeSeparators(path)));
#endif
    return Written;
}

} // namespace

int main(int argc, char* argv[]) {
    QCoreApplication application(argc, argv);
    writeUtf8();
    std::signal(SIGINT, [](int) {
        setEcho(true);
        std::_Exit(WrongUse);
    });
    const auto read = qScopeGuard(waitForReader);
    QCommandLineParser parser;
    parser.setApplicationDescription("Stores the password of the server login for the Scheduler, in the file "
                                     "Zelvan.SSS. It is asked for, or read from standard input.");
    parser.addHelpOption();
    parser.addPositionalArgument("folder", "Where to write; the program's own folder otherwise.", "[folder]");
    parser.process(application);
    const QStringList arguments = parser.positionalArguments();
    const QDir folder(arguments.value(0, QCoreApplication::applicationDirPath()));
    if (arguments.size() > 1 || !folder.exists()) {
        say(arguments.size() > 1 ? QString("Only one folder can be given.")
                                 : QString("There is no folder %1.").arg(arguments.first()));
        return WrongUse;
    }

    const bool terminal = inputIsTerminal();
    const QString password = terminal ? ask("Password of the server login: ") : readLine();
    if (password.isEmpty()) {
        say("The password is empty. Nothing was written.");
        return NoPassword;
    }
    if (terminal && ask("The same again: ") != password) {
        say("The two passwords differ. Nothing was written.");
        return NoPassword;
    }
    return writeFile(folder.filePath(SecurityFileName), password);
}
