#include "app/modMain.h"
#include "app/openServer.h"
#include "base/CommandLine.h"
#include "base/Session.h"
#include "ui/EventLoopWaiter.h"
#include "ui/MessageBoxes.h"

#include <QApplication>
#include <QFile>

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    QApplication::setApplicationName("zelvan-scheduler");
    EventLoopWaiter waiter;
    Session session(QApplication::applicationDirPath(), openServer);
    session.waiter = &waiter;
    MessageBoxes messages;
    ScreenContext context{session, messages};
    modMain program(context);
    const QStringList arguments = application.arguments().mid(1);
    hideArguments(argc, argv);
    QFile input;
    input.open(stdin, QIODevice::ReadOnly);
    if (!program.start(application, typedCommandLine(arguments, input))) return 0;
    const int result = application.exec();
    program.endProgram();
    return result;
}
