#include "app/openServer.h"
#include "base/SettingsStore.h"
#include "demo/DemoApplication.h"
#include "demo/DemoServer.h"
#include "demo/GuestDemo.h"
#include "demo/walk/walkProgram.h"
#include "ui/EventLoopWaiter.h"

#include <QApplication>
#include <QDir>
#include <QTemporaryDir>
#include <cstdlib>

/// Walks the program's typical road with the demo engine beside it, on the demo server of the folder, or as
/// a guest on the server that SCHEDULER_TEST_SERVER names (demo/GuestDemo.h):
/// zelvan-scheduler-walk <demo folder> <picture folder> [light|dark]
int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    const QStringList arguments = application.arguments();
    if (arguments.size() < 3)
        qFatal("usage: zelvan-scheduler-walk <demo folder> <picture folder> [light|dark]");
    const QTemporaryDir settings; // the walk must not meet, or change, what a user set
    keepSettingsIn(settings.path());
    if (arguments.size() > 3) saveSetting("VWT", "Appearance", "Palette", arguments[3]);

    const QDir demo(arguments[1]);
    std::unique_ptr<GuestDemo> guest;
    QString server = "file:" + demo.filePath("server.db"); // the pictures show it as it was given
    if (GuestDemo::isInvited()) {
        guest = std::make_unique<GuestDemo>(DemoOptions());
        server = GuestDemo::host().dataSource;
        demoApplication::create(demo.absoluteFilePath("app"));
    }
    EventLoopWaiter waiter;
    const bool passed = walkProgram(application, {server, demo.absoluteFilePath("app"), arguments[2],
                                                  QApplication::applicationDirPath() + "/zelvan-demo-engine",
                                                  openServer, &waiter});
    return passed ? EXIT_SUCCESS : EXIT_FAILURE;
}
