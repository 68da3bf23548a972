#include "app/modMain.h"
#include "app/openServer.h"
#include "base/Session.h"
#include "base/SettingsStore.h"
#include "demo/DemoApplication.h"
#include "demo/DemoServer.h"
#include "demo/GuestDemo.h"
#include "demo/walk/Road.h"
#include "schedules/frmMainScreen.h"
#include "ui/EventLoopWaiter.h"
#include "ui/MessageBoxes.h"

#include <QApplication>
#include <QProcess>
#include <QSettings>
#include <QTemporaryDir>
#include <cstdlib>

namespace {
QProcess* runningEngine = nullptr;
}

/// Walks the program's typical road with the demo engine beside it, on the demo server of the folder, or as
/// a guest on the server that SCHEDULER_TEST_SERVER names (demo/GuestDemo.h):
/// zelvan-scheduler-walk <demo folder> <picture folder> [light|dark]
int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    if (argc < 3) qFatal("usage: zelvan-scheduler-walk <demo folder> <picture folder> [light|dark]");
    const QTemporaryDir settings; // the walk must not meet, or change, what a user set
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, settings.path());
    if (argc > 3) saveSetting("VWT", "Appearance", "Palette", QString::fromLocal8Bit(argv[3]));

    const QDir demo(QString::fromLocal8Bit(argv[1]));
    std::unique_ptr<GuestDemo> guest;
    QString server = "file:" + demo.filePath("server.db"); // the pictures show it as it was given
    if (GuestDemo::isInvited()) {
        guest = std::make_unique<GuestDemo>(DemoOptions());
        server = GuestDemo::host().dataSource;
        demoApplication::create(demo.absoluteFilePath("app"));
    }
    EventLoopWaiter waiter;
    Session session(demo.absoluteFilePath("app"), openServer);
    session.waiter = &waiter;
    MessageBoxes messages;
    ScreenContext context{session, messages};

    QProcess engine;
    engine.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    engine.start(QApplication::applicationDirPath() + "/zelvan-demo-engine",
                 {server, "--seconds-per-run", "2"});

    runningEngine = &engine;
    std::atexit([] { // however the walk ends, the engine must not outlive it
        if (!runningEngine) return;
        runningEngine->kill();
        runningEngine->waitForFinished();
    });
    Walker walker(QString::fromLocal8Bit(argv[2]));
    planRoad(walker, server);
    int result = EXIT_FAILURE;
    modMain program(context);
    walker.start([&](bool passed) {
        result = passed ? EXIT_SUCCESS : EXIT_FAILURE;
        if (!passed) std::exit(result); // whatever screen is open, the walk is over
        QApplication::quit();
    });
    if (program.start(application, {})) QApplication::exec();
    program.endProgram();
    runningEngine = nullptr;
    engine.terminate();
    engine.waitForFinished();
    return result;
}
