#include "soak/Soak.h"

#include "base/SettingsStore.h"
#include "db/DbError.h"
#include "soak/programs.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <cstdio>

/// zelvan-scheduler-soak <minutes>
/// The other ways to call it are its own: save <folder> <name>, screens <folder>.
int main(int argc, char* argv[]) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_LOGGING_RULES", "*.warning=false"); // a platform without a display warns of what it cannot do
    QApplication application(argc, argv);
    const QStringList arguments = application.arguments().mid(1);
    const QString role = arguments.value(0);
    if (role == "save" || role == "screens") {
        const QString folder = arguments.value(1);
        keepSettingsIn(folder); // nobody's own are touched
        return role == "save" ? soak::runSaver(application, folder, arguments.value(2))
                              : soak::runScreens(application, folder);
    }
    const double minutes = role.toDouble();
    if (minutes <= 0) qFatal("usage: zelvan-scheduler-soak <minutes>");
    const QTemporaryDir folder;
    try {
        soak::Soak soak(folder.path(), QApplication::applicationFilePath(), DEMO_ENGINE);
        QElapsedTimer clock;
        for (clock.start(); clock.elapsed() < qint64(minutes * 60'000);) soak.killOnce();
        soak.end();
        soak.report();
        return soak.problems().isEmpty() ? EXIT_SUCCESS : EXIT_FAILURE;
    } catch (const std::exception& error) { // the server file cannot be read any more
        std::fprintf(stderr, "%s\n", error.what());
        return EXIT_FAILURE;
    }
}
