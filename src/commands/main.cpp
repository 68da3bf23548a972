#include "app/Terminal.h"
#include "app/openServer.h"
#include "base/Session.h"
#include "commands/Console.h"
#include "commands/ExitCode.h"
#include "commands/Program.h"
#include "db/StoppableWaiter.h"

#include <QCoreApplication>
#include <QFile>
#include <QThread>
#include <csignal>
#include <cstdlib>

namespace {

StoppableWaiter waiter;
std::atomic<bool> stopped = false;

/// A second signal ends the program at once.
void stop(int signal) {
    // Nothing has begun before a password or an answer is there, and the waiting for it cannot be ended.
    if (isEchoOff() || Console::isReading()) {
        setEcho(true);
        std::_Exit(int(ExitCode::Interrupted));
    }
    stopped = true;
    waiter.stop();
    std::signal(signal, SIG_DFL);
}

/// In small steps, since a signal does not wake a thread.
bool waitAwhile(std::chrono::milliseconds time) {
    constexpr std::chrono::milliseconds step(100);
    for (; time.count() > 0 && !stopped; time -= step) QThread::msleep(ulong(step.count()));
    return !stopped;
}

} // namespace

int main(int argc, char* argv[]) {
    QCoreApplication application(argc, argv);
    std::signal(SIGINT, stop);
    std::signal(SIGTERM, stop);
#ifdef SIGPIPE
    std::signal(SIGPIPE, SIG_IGN); // a reader that goes away is no reason to leave work half done
#endif
    writeUtf8();
    const std::unique_ptr<QIODevice> input = standardInput();
    QFile output, errors;
    output.open(stdout, QIODevice::WriteOnly | QIODevice::Unbuffered);
    errors.open(stderr, QIODevice::WriteOnly | QIODevice::Unbuffered);
    Console console(*input, output, errors, inputIsTerminal());
    Session session(QCoreApplication::applicationDirPath(), openServer);
    session.waiter = &waiter;
    return int(runProgram(application.arguments().mid(1), session, console, waitAwhile));
}
