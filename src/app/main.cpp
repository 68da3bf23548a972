#include "app/Terminal.h"
#include "app/modMain.h"
#include "app/openServer.h"
#include "base/CommandLine.h"
#include "base/Session.h"
#include "ui/EventLoopWaiter.h"
#include "ui/MessageBoxes.h"

#include <QApplication>

int main(int argc, char* argv[]) {
#ifdef Q_OS_WIN
    // Dark frames for windows where the desktop is dark; said before the desktop is asked.
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "windows:darkmode=1");
#endif
    QApplication application(argc, argv);
    QApplication::setApplicationName("zelvan-scheduler");
    EventLoopWaiter waiter;
    Session session(QApplication::applicationDirPath(), openServer);
    session.waiter = &waiter;
    MessageBoxes messages;
    ScreenContext context{session, messages};
    modMain program(context);
    const QStringList arguments = givenArguments(application);
    hideArguments(argc, argv);
    if (!program.start(application, typedCommandLine(arguments, *standardInput()))) return 0;
    const int result = application.exec();
    program.endProgram();
    return result;
}
