#include "demo/walk/walkProgram.h"

#include "app/modMain.h"
#include "base/Session.h"
#include "demo/walk/Road.h"
#include "schedules/frmMainScreen.h"
#include "ui/MessageBoxes.h"

#include <QApplication>
#include <QProcess>
#include <QScopeGuard>
#include <cstdlib>

namespace {
QProcess* runningEngine = nullptr;
}

bool walkProgram(QApplication& application, const Walk& walk) {
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs); // the walker types into them
    Session session(walk.appFolder, walk.opener);
    session.waiter = walk.waiter;
    MessageBoxes messages;
    ScreenContext context{session, messages};

    QProcess engine;
    engine.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    engine.start(walk.engine, {walk.server, "--seconds-per-run", "2"});
    runningEngine = &engine;
    std::atexit([] { // however the walk ends, the engine must not outlive it
        if (!runningEngine) return;
        runningEngine->kill();
        runningEngine->waitForFinished();
    });
    const auto end = qScopeGuard([&] {
        runningEngine = nullptr;
#ifdef Q_OS_WIN
        engine.kill(); // a console program hears nothing gentler there
#else
        engine.terminate();
#endif
        engine.waitForFinished();
    });

    Walker walker(walk.pictureFolder, walk.note);
    planRoad(walker, walk.server);
    bool passed = false;
    modMain program(context);
    walker.start([&](bool walked) {
        passed = walked;
        if (!passed) std::exit(EXIT_FAILURE); // whatever screen is open, the walk is over
        QApplication::quit();
    });
    if (program.start(application, {})) QApplication::exec();
    program.endProgram();
    return passed;
}
