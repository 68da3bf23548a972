#include "demo/walk/TemplateRoad.h"

#include "demo/walk/Controls.h"
#include "ui/uctListView.h"

#include <QDateTimeEdit>

namespace {

/// Adds one report to the template on show: type, catalogue entry, parameters as `set` sets them.
void planReport(Walker& walker, const QString& type, const QString& title,
                const std::function<void(QWidget&)>& set) {
    const QString name = title.section(" - ", -1).toLower();
    walker.add("add the report " + name, on("frmTemplate"), press("cmdAdd"));
    walker.add("choose its type", on("frmReport"), [=](QWidget& screen) {
        choose(screen, "cmbType", type);
        press("cmdReports")(screen);
    });
    walker.add("choose the report", on("frmSelectReports"), [=](QWidget& screen) {
        select("lstReports", title)(screen);
        press("cmdSelect")(screen);
    });
    walker.add("see what it offers", on("frmReport"), [](QWidget& screen) {
        tick(screen, "chkExcel");
        press("cmdParameters")(screen);
    });
    walker.add("set the parameters of " + name, on("frmSelectParameters"), [=](QWidget& screen) {
        screen.resize(1200, 700);
        set(screen);
    });
    walker.add("save the parameters of " + name, on("frmSelectParameters"), press("cmdSave"));
    walker.add("save the report " + name, on("frmReport"), press("cmdSave"));
}

} // namespace

void planProject(Walker& walker, const QString& button, const QString& screenName) {
    walker.add("go to choose a project", on(screenName), press(button));
    // Projects without cost centres are left out, which is told once each time.
    walker.add("hear of projects left out", onMessage("Some imported projects"), answer("OK"));
    walker.add("choose the project", on("frmSQLServerDatabases"), [](QWidget& screen) {
        type(screen, "txtSearch", "brightw");
        press("cmdOpen")(screen);
    });
}

void planTemplate(Walker& walker) {
    walker.add("manage the templates", on("frmMainScreen"), press("cmdManageTemplates"));
    planProject(walker, "cmdAdd", "frmManageTemplates");
    walker.add("name the template", on("frmTemplate"), [](QWidget& screen) {
        type(screen, "txtTemplate", walkedTemplate);
    });
    planReport(walker, "Summary Report", "Account Level Report - Current Bill By Service Number",
               [](QWidget& screen) { tick(screen, "OptSelect2"); });
    planReport(walker, "Itemised Call Report", "Call Summary Reports - All Calls Summary", [](QWidget& screen) {
        type(screen, "txtCost0", "0.50");
        control<QAbstractButton>(screen, "ChkDay1").click();
        control<QAbstractButton>(screen, "ChkDistance10").click();
        tick(screen, "ChkOverNight");
    });
    planReport(walker, "Private Circuits Report", "Circuit Details - Total Circuit Charges",
               [](QWidget& screen) { tick(screen, "OptSelect2"); });
    walker.add("save the template", on("frmTemplate"), press("cmdSave"));
    walker.add("see it in the list", on("frmManageTemplates", [](QWidget& screen) {
                   return idOf(screen, "lstTemplates", walkedTemplate) != -1;
               }),
               press("cmdClose"));
}

void planSubProjects(Walker& walker) {
    walker.add("open the options again", on("frmMainScreen"), press("cmdOptions"));
    walker.add("open the e-mail settings", on("frmOptions"), press("cmdEmail"));
    walker.add("add an address", on("frmEmailSettings"), press("cmdAdd"));
    walker.add("choose its cost centre", on("frmMailSelection", [](QWidget& screen) {
                   return !list(screen, "lstCentres").rows().rows().empty();
               }),
               [](QWidget& screen) {
                   list(screen, "lstCentres").selectId(list(screen, "lstCentres").rows().rows().front().id);
                   type(screen, "txtEmail", "walker@example.org");
                   press("cmdAdd")(screen);
               });
    walker.add("hear that it was added", onMessage("Entry has been added"), answer("OK"));
    walker.add("close it", on("frmMailSelection"), press("cmdClose"));
    walker.add("save the address book", on("frmEmailSettings"), press("cmdSave"));
    walker.add("hear that it was saved", onMessage("Changes have been saved."), answer("OK"));
    walker.add("leave the e-mail settings", on("frmEmailSettings"), press("cmdExit"));
    walker.add("leave the options", on("frmOptions"), press("cmdExit"));

    walker.add("add a schedule for each cost centre", on("frmMainScreen"), press("cmdAdd"));
    planProject(walker, "cmdOpen", "frmSchedule");
    walker.add("set up sub-projects", on("frmSchedule"), [](QWidget& screen) {
        type(screen, "txtTitle", "Walked: every department");
        press("cmdCCSub")(screen);
    });
    walker.add("name the sub-project template", on("frmTransfer"), [](QWidget& screen) {
        type(screen, "txtTemplate", "Walked: departments");
        tick(screen, "OptCC2");
        tick(screen, "Option1");
    });
    walker.add("save the sub-project template", on("frmTransfer"), press("cmdSave"));
    walker.add("hear that files are over-written", onMessage("Any existing files"), answer("OK"));
    walker.add("choose it", on("frmSchedule"), [](QWidget& screen) {
        choose(screen, "cmbTemplate", "Walked: departments");
        control<QTimeEdit>(screen, "dtRunOnTime").setTime(QTime::currentTime().addSecs(2));
        press("cmdSave")(screen);
    });
    walker.add("see it run", statusIs("lstFinished", "Walked: every department", "Completed"), [](QWidget&) {});
}
