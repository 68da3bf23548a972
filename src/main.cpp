#include "app/Session.h"
#include "app/openServer.h"
#include "modMain.h"
#include "ui/MessageBoxes.h"

#include <QApplication>

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    QApplication::setApplicationName("zelvan-scheduler");
    Session session(QApplication::applicationDirPath(), openServer);
    MessageBoxes messages;
    ScreenContext context{session, messages};
    modMain program(context);
    if (!program.start(application, application.arguments().mid(1).join(' '))) return 0;
    const int result = application.exec();
    program.endProgram();
    return result;
}
