#include "demo/walk/Road.h"

#include "demo/DemoServer.h"
#include "app/Session.h"
#include "schedules/frmMainScreen.h"
#include "ui/uctListView.h"

#include <QLineEdit>
#include <QTimer>

namespace {

uctListView& list(QWidget& screen, const QString& name) {
    return control<uctListView>(screen, name);
}

/// The row of a list whose first column reads so; -1 when there is none.
int idOf(QWidget& screen, const QString& listName, const QString& title) {
    for (const ListRow& row : list(screen, listName).rows().rows())
        if (row.texts.value(0) == title) return row.id;
    return -1;
}

Walker::Act select(const QString& listName, const QString& title) {
    return [=](QWidget& screen) { list(screen, listName).selectId(idOf(screen, listName, title)); };
}

/// Rows are read at each tick of the timer; a walker need not wait for it.
void refresh(QWidget& screen) {
    control<frmMainScreen>(screen, "frmMainScreen").FillScheduleList();
}

Walker::Ready statusIs(const QString& listName, const QString& title, const QString& status) {
    return on("frmMainScreen", [=](QWidget& screen) {
        refresh(screen);
        const int id = idOf(screen, listName, title);
        return id != -1 && list(screen, listName).textOf(id, 1).startsWith(status);
    });
}

void type(QWidget& screen, const QString& box, const QString& text) {
    control<QLineEdit>(screen, box).setText(text);
}

void planLogin(Walker& walker, const QString& server) {
    walker.add("log in with a wrong password", on("frmLogin"), [=](QWidget& screen) {
        type(screen, "TxtUsername", Session::serverLoginName);
        type(screen, "TxtPassword", "not-the-password");
        type(screen, "txtServer", server);
        press("cmdOk")(screen);
    });
    walker.add("read why", onMessage("Invalid Login."), answer("OK"));
    walker.add("log in", on("frmLogin"), [](QWidget& screen) {
        type(screen, "TxtPassword", DemoServer::loginPassword);
        press("cmdOk")(screen);
    });
    walker.add("see the splash screen", on("frmSplashScreen"), [](QWidget&) {});
}

void planMainScreen(Walker& walker) {
    walker.add("see the schedules", on("frmMainScreen"), press("cmdVersion"));
    walker.add("see the version", onMessage("Scheduler v"), answer("OK"));
    walker.add("open the help", on("frmMainScreen"), press("cmdHelp"));
    walker.add("read the manual", on("frmHelp"), [](QWidget& screen) { screen.close(); });
    walker.add("sort by title", on("frmMainScreen"),
               [](QWidget& screen) { ListViewColumnSort(list(screen, "lstSchedules"), 0, false); });
    walker.add("open the options", on("frmMainScreen"), press("cmdOptions"));
    walker.add("see the options", on("frmOptions"), press("cmdExit"));
}

} // namespace

void planRoad(Walker& walker, const Session&, const QString& server) {
    planLogin(walker, server);
    planMainScreen(walker);
}
