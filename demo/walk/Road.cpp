#include "demo/walk/Road.h"

#include "demo/DemoServer.h"
#include "app/Session.h"
#include "schedules/frmMainScreen.h"
#include "ui/uctListView.h"

#include <QComboBox>
#include <QDateTimeEdit>
#include <QInputDialog>
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
    walker.add("see the schedules", on("frmMainScreen"), [](QWidget& screen) {
        screen.showNormal();
        screen.resize(1366, 768);
        press("cmdVersion")(screen);
    });
    walker.add("see the version", onMessage("Scheduler v"), answer("OK"));
    walker.add("open the help", on("frmMainScreen"), press("cmdHelp"));
    walker.add("read the manual", on("frmHelp"), [](QWidget& screen) { screen.close(); });
    walker.add("sort by title and filter", on("frmMainScreen"), [](QWidget& screen) {
        ListViewColumnSort(list(screen, "lstSchedules"), 0, false);
        type(screen, "txtFilterSchedules", "weekly");
    });
    walker.add("see the filtered list", on("frmMainScreen"), [](QWidget& screen) {
        type(screen, "txtFilterSchedules", "");
        press("cmdOptions")(screen);
    });
    walker.add("see the options", on("frmOptions"), press("cmdExit"));
}

/// A schedule of the demo's first project that is due at once, watched until the engine has run it.
void planSchedule(Walker& walker) {
    const QString title = "Walked: monthly review";
    walker.add("add a schedule", on("frmMainScreen"), press("cmdAdd"));
    walker.add("give it a title", on("frmSchedule"), [=](QWidget& screen) {
        type(screen, "txtTitle", title);
        press("cmdOpen")(screen);
    });
    // Projects without cost centres are left out, which is told once each time.
    walker.add("hear of projects left out", onMessage("Some imported projects"), answer("OK"));
    walker.add("choose the project", on("frmSQLServerDatabases"), [](QWidget& screen) {
        type(screen, "txtSearch", "brightw");
        press("cmdOpen")(screen);
    });
    walker.add("choose the template", on("frmSchedule", [](QWidget& screen) {
                   return control<QComboBox>(screen, "cmbTemplate").count() > 0;
               }),
               [](QWidget& screen) {
                   auto& templates = control<QComboBox>(screen, "cmbTemplate");
                   templates.setCurrentIndex(templates.findText("Weekly call review"));
                   emit templates.activated(templates.currentIndex());
               });
    walker.add("set the time", on("frmSchedule"), [](QWidget& screen) {
        control<QTimeEdit>(screen, "dtRunOnTime").setTime(QTime::currentTime().addSecs(4));
    });
    walker.add("save it", on("frmSchedule"), press("cmdSave"));
    walker.add("see it pending", statusIs("lstSchedules", title, "Pending"), select("lstSchedules", title));
    walker.add("see it processed", statusIs("lstSchedules", title, "Processing"), [](QWidget&) {});
    walker.add("see it completed", statusIs("lstFinished", title, "Completed"), [=](QWidget& screen) {
        select("lstFinished", title)(screen);
        press("cmdEdit")(screen);
    });
    walker.add("read its log", on("frmScheduleView"), press("cmdSaveAs"));
    walker.add("save it as a new one", on("QInputDialog"), [](QWidget& screen) {
        auto& dialog = control<QInputDialog>(screen, screen.objectName());
        dialog.setTextValue("Walked: once more");
        QTimer::singleShot(0, &dialog, &QDialog::accept);
    });
    walker.add("hear that it runs at once", onMessage("The new schedule will run immediately"), answer("OK"));
    walker.add("see the copy completed", statusIs("lstFinished", "Walked: once more", "Completed"), [=](QWidget& screen) {
        select("lstFinished", "Walked: once more")(screen);
        press("cmdDelete")(screen);
    });
    walker.add("delete the copy", onMessage("Are you sure you want to delete the schedule"), answer("&Yes"));
    walker.add("see it gone", on("frmMainScreen"), [](QWidget&) {});
}

} // namespace

void planRoad(Walker& walker, const QString& server) {
    planLogin(walker, server);
    planMainScreen(walker);
    planSchedule(walker);
}
