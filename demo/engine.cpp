#include "app/Terminal.h"
#include "app/openServer.h"
#include "base/Session.h"
#include "db/DbError.h"
#include "demo/DemoEngine.h"
#include "demo/DemoServer.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QEventLoop>
#include <QTextStream>
#include <QTimer>
#include <atomic>
#include <csignal>

namespace {

std::atomic<bool> asked{false};

void askToEnd(int) {
    asked = true;
}

/// Runs the engine from a timer until it is asked to end.
class EngineProgram {
public:
    EngineProgram(const QString& server, int secondsPerRun)
        : m_connection({Session::serverLoginName, DemoServer::loginPassword, "NorvaScheduler", server},
                       openServer),
          m_engine(
              m_connection, [this] { work(); }, [this](const QString& line) { noteAnswer(), tell(line); }),
          m_secondsPerRun(secondsPerRun) {}

    /// False when the server could not be asked; says so once, until it is back.
    bool runDue() {
        try {
            m_engine.runDueSchedules(WallClock::now());
            noteAnswer();
            return true;
        } catch (const DbError& error) {
            if (!m_failing) tell("No schedules can be run, trying again: " + error.text());
            m_failing = true;
            m_connection.close();
            return false;
        }
    }
    void runUntilAsked() {
        QTimer check;
        QObject::connect(&check, &QTimer::timeout, [this] {
            if (asked)
                QCoreApplication::quit();
            else if (!m_busy)
                m_busy = true, runDue(), m_busy = false;
        });
        check.start(1000);
        tell("Waiting for schedules; Ctrl+C ends.");
        QCoreApplication::exec();
        tell("Ended.");
    }

private:
    /// The event loop goes on, so that the program can be asked to end in the middle of a run, which
    /// is then brought to its end at once.
    void work() {
        QEventLoop loop;
        QTimer check;
        QObject::connect(&check, &QTimer::timeout, &loop, [&] {
            if (asked) loop.quit();
        });
        check.start(100);
        QTimer::singleShot(m_secondsPerRun * 1000, &loop, &QEventLoop::quit);
        loop.exec();
        if (asked) m_engine.stop();
    }
    void noteAnswer() {
        if (m_failing) tell("The server is back.");
        m_failing = false;
    }
    void tell(const QString& line) {
        m_out << QDateTime::currentDateTime().toString("HH:mm:ss ") << line << Qt::endl;
    }

    QTextStream m_out{stdout};
    Connection m_connection;
    DemoEngine m_engine;
    int m_secondsPerRun;
    bool m_failing = false;
    bool m_busy = false;
};

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    writeUtf8();
    QCommandLineParser parser;
    parser.setApplicationDescription(
        "Runs the schedules of a demo server, as the analysis product's engine would.");
    parser.addHelpOption();
    parser.addPositionalArgument("server",
                                 "The server as users name it, such as file:/home/me/demo/server.db.");
    parser.addOptions({{"once", "Run what is due now, then end."},
                       {"seconds-per-run", "How long each run takes.", "seconds", "5"}});
    parser.process(application);
    bool isNumber = false;
    const int seconds = parser.value("seconds-per-run").toInt(&isNumber);
    if (parser.positionalArguments().size() != 1 || !isNumber || seconds < 0) parser.showHelp(2);

    std::signal(SIGINT, askToEnd);
    std::signal(SIGTERM, askToEnd);
    EngineProgram program(parser.positionalArguments().first(), seconds);
    if (parser.isSet("once")) return program.runDue() ? 0 : 1;
    program.runUntilAsked();
    return 0;
}
