#include "demo/walk/Road.h"

#include "base/Session.h"
#include "demo/DemoServer.h"
#include "demo/walk/AgendaRoad.h"
#include "demo/walk/Controls.h"
#include "demo/walk/PlanningRoad.h"
#include "demo/walk/SubProjectRoad.h"
#include "demo/walk/TemplateRoad.h"
#include "ui/uctListView.h"

#include <QComboBox>
#include <QDateTimeEdit>
#include <QInputDialog>
#include <QLineEdit>
#include <QTimer>

namespace {

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
    // On a slow server the main screen is there as soon as the splash screen may go.
    const auto started = [](QWidget& screen) {
        return screen.objectName() == "frmSplashScreen" || screen.objectName() == "frmMainScreen";
    };
    walker.add("see the splash screen", started, [](QWidget&) {});
}

void planMainScreen(Walker& walker) {
    walker.add("see the schedules", on("frmMainScreen"), [](QWidget& screen) {
        screen.showNormal();
        screen.resize(1366, 768);
        press("cmdVersion")(screen);
    });
    walker.add("see the version", onMessage("Scheduler v"), answer("OK"));
    walker.add("open the help", on("frmMainScreen"), press("cmdHelp"));
    walker.add("find in the manual", on("frmHelp"), [](QWidget& screen) {
        type(screen, "txtFind", "caption");
        emit control<QLineEdit>(screen, "txtFind").returnPressed();
    });
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

/// A schedule of the walked template that is due at once, watched until the engine has run it.
void planSchedule(Walker& walker) {
    const QString title = "Walked: monthly review";
    walker.add("add a schedule", on("frmMainScreen"), press("cmdAdd"));
    walker.add("give it a title", on("frmSchedule"),
               [=](QWidget& screen) { type(screen, "txtTitle", title); });
    planProject(walker, "cmdOpen", "frmSchedule", "brightw");
    walker.add("choose the template",
               on("frmSchedule",
                  [](QWidget& screen) { return control<QComboBox>(screen, "cmbTemplate").count() > 0; }),
               [](QWidget& screen) { choose(screen, "cmbTemplate", walkedTemplate); });
    walker.add("set the time", on("frmSchedule"), [](QWidget& screen) {
        control<QTimeEdit>(screen, "dtRunOnTime").setTime(QTime::currentTime().addSecs(4));
    });
    walker.add("save it", on("frmSchedule"), press("cmdSave"));
    walker.add("see it pending", statusIs(title, "Pending"), select("lstSchedules", title));
    walker.add("see it processed", statusIs(title, "Processing"), [](QWidget&) {});
    walker.add("see it completed", statusIs(title, "Completed"), [=](QWidget& screen) {
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
    walker.add("see the copy completed", statusIs("Walked: once more", "Completed"), [=](QWidget& screen) {
        select("lstFinished", title)(screen);
        press("cmdRunNow")(screen);
    });
    walker.add("see it run once more", statusIs(title + " (2)", "Completed"), [](QWidget& screen) {
        type(screen, "txtFilterFinished", "walked");
        list(screen, "lstFinished").selectAll();
        press("cmdDelete")(screen);
    });
    walker.add("delete all of them", onMessage("Are you sure you want to delete the 3 selected schedules"),
               answer("&Yes"));
    walker.add("see them gone", on("frmMainScreen"),
               [](QWidget& screen) { type(screen, "txtFilterFinished", ""); });
}

} // namespace

void planRoad(Walker& walker, const QString& server) {
    planLogin(walker, server);
    planMainScreen(walker);
    planAgenda(walker);
    planTemplates(walker);
    planSchedule(walker);
    planSeries(walker);
    planSubProjects(walker);
}
