#include "app/modMain.h"
#include "app/openServer.h"
#include "base/Session.h"
#include "demo/DemoServer.h"
#include "demo/walk/Controls.h"
#include "schedules/frmMainScreen.h"
#include "soak/Soak.h"
#include "soak/programs.h"
#include "ui/EventLoopWaiter.h"
#include "ui/MessageBoxes.h"

#include <QApplication>
#include <QTimer>
#include <cstdlib>

namespace soak {

namespace {

void planRound(Walker& walker) {
    walker.add("refresh, see the templates", on("frmMainScreen"), [](QWidget& screen) {
        control<frmMainScreen>(screen, "frmMainScreen").FillScheduleList();
        press("cmdManageTemplates")(screen);
    });
    walker.add("leave them", on("frmManageTemplates"), press("cmdClose"));
    walker.add("open a schedule", on("frmMainScreen"), [](QWidget& screen) {
        select("lstSchedules", "Quarterly trend figures, all divisions")(screen);
        press("cmdEdit")(screen);
    });
    walker.add("leave it", on("frmSchedule"), press("cmdExit"));
    walker.add("see the options", on("frmMainScreen"), press("cmdOptions"));
    walker.add("leave them", on("frmOptions"), press("cmdExit"));
}

/// One round after the other; a screen that does not come ends the program.
void walkRound() {
    auto* walker = new Walker({});
    planRound(*walker);
    walker->start([walker](bool walked) {
        if (!walked) std::exit(EXIT_FAILURE);
        walker->deleteLater();
        QTimer::singleShot(500, qApp, walkRound);
    });
}

} // namespace

int runScreens(QApplication& application, const QString& folder) {
    EventLoopWaiter waiter;
    Session session(Soak::appFolder(folder), openServer);
    session.waiter = &waiter;
    MessageBoxes messages;
    ScreenContext context{session, messages};
    modMain program(context);
    QTimer::singleShot(0, &application, walkRound);
    const QString login = QString("%1,%2,\"%3\"")
                              .arg(Session::serverLoginName, DemoServer::loginPassword, Soak::server(folder));
    if (!program.start(application, login)) return EXIT_FAILURE;
    return application.exec();
}

} // namespace soak
