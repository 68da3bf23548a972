#include "demo/walk/TemplateRoad.h"

#include "demo/walk/Controls.h"
#include "ui/uctListView.h"

#include <QTemporaryDir>
#include <memory>

namespace {

/// What a walker does to get one report.
struct WalkedReport {
    QString type;
    QString title;
    std::function<void(QWidget&)> set; ///< in the parameter editor
    QString numbersButton = {};        ///< there, when telephone numbers are entered as well
    QString numbersScreen = {};
};

void planChoice(Walker& walker, const WalkedReport& report, const QString& name) {
    walker.add("add the report " + name, on("frmTemplate"), press("cmdAdd"));
    walker.add("choose its type", on("frmReport"), [=](QWidget& screen) {
        choose(screen, "cmbType", report.type);
        press("cmdReports")(screen);
    });
    walker.add("choose the report", on("frmSelectReports"), [=](QWidget& screen) {
        select("lstReports", report.title)(screen);
        press("cmdSelect")(screen);
    });
    walker.add("see what it offers", on("frmReport"), [](QWidget& screen) {
        tick(screen, "chkExcel");
        press("cmdParameters")(screen);
    });
}

void planNumbers(Walker& walker, const WalkedReport& report, const QString& name) {
    walker.add("go to the numbers of " + name, on("frmSelectParameters"), press(report.numbersButton));
    walker.add("enter a number", on(report.numbersScreen), [](QWidget& screen) {
        type(screen, "txtNumber", "0800 555 0100");
        press("cmdAdd")(screen);
    });
    walker.add("keep the numbers", on(report.numbersScreen), press("cmdOk"));
}

void planReport(Walker& walker, const WalkedReport& report) {
    const QString name = report.title.section(" - ", -1).toLower();
    planChoice(walker, report, name);
    walker.add("set the parameters of " + name, on("frmSelectParameters"), [=](QWidget& screen) {
        screen.resize(1200, 700);
        report.set(screen);
    });
    if (!report.numbersButton.isEmpty()) planNumbers(walker, report, name);
    walker.add("save the parameters of " + name, on("frmSelectParameters"), press("cmdSave"));
    walker.add("save the report " + name, on("frmReport"), press("cmdSave"));
}

void planTemplate(Walker& walker, const QString& title, const QList<WalkedReport>& reports) {
    walker.add("name the template", on("frmTemplate"),
               [=](QWidget& screen) { type(screen, "txtTemplate", title); });
    for (const WalkedReport& report : reports) planReport(walker, report);
    walker.add("save the template", on("frmTemplate"), press("cmdSave"));
    walker.add(
        "see it in the list",
        on("frmManageTemplates", [=](QWidget& screen) { return idOf(screen, "lstTemplates", title) != -1; }),
        [](QWidget&) {});
}

/// Dates, days, hours, lines, bands, thresholds, accounts, excluded numbers and call classes.
void setCalls(QWidget& screen) {
    untick(screen, "ChkDay1");
    tick(screen, "ChkOverNight");
    tick(screen, "OptMob2");
    untick(screen, "ChkDistance10");
    type(screen, "txtCost0", "0.50");
    type(screen, "txtDuration1", "90");
    tick(screen, "OptSelect4");
    tickFirst(screen, "lstAccounts");
    tickFirst(screen, "lstCallClasses");
}

QList<WalkedReport> unitabReports() {
    return {{"Summary Report", "Account Level Report - Current Bill By Service Number",
             [](QWidget& screen) {
                 tick(screen, "OptSelect3");
                 tickFirst(screen, "lstAccounts");
                 chooseLast(screen, "cmbSummaryLevel");
                 chooseLast(screen, "cmbSourceBill");
             }},
            {"Itemised Call Report", "100 Most Expensive - All Calls", setCalls, "cmdExclusions",
             "frmExcludeNumbers"},
            {"Itemised Call Report", "General Reports - Calls To Number",
             [](QWidget& screen) { tick(screen, "OptSelect2"); }, "cmdCallsTo", "frmRangeSel"},
            {"Itemised Call Report", "Wispera Reports - User Summary",
             [](QWidget& screen) { chooseLast(screen, "cmbWisperaUser"); }},
            {"Private Circuits Report", "Circuit Details - Selected Circuit",
             [](QWidget& screen) { chooseLast(screen, "cmbCircuit"); }},
            {"Private Circuits Report", "Circuit Details - Total Circuit Charges",
             [](QWidget& screen) { choose(screen, "CmbPercent", "10"); }}};
}

QList<WalkedReport> linkvaleReports() {
    return {{"Linkvale Summary Report", "Recurring Charges",
             [](QWidget& screen) { type(screen, "txtBillNumber", "LV20417"); }}};
}

QList<WalkedReport> mobileReports() {
    return {{"Mobile Report", "Tagged Call Reports - Usage Summary",
             [](QWidget& screen) { choose(screen, "cmbCallTagging", "Exclude Private"); }}};
}

} // namespace

void planProject(Walker& walker, const QString& button, const QString& screenName, const QString& project,
                 Hearing hearing) {
    walker.add("go to choose a project", on(screenName), press(button));
    // Projects without cost centres are left out, which is told in a box once.
    if (hearing == FirstTime)
        walker.add("hear of projects left out", onMessage("Some imported projects"), answer("OK"));
    walker.add("choose the project", on("frmSQLServerDatabases"), [=](QWidget& screen) {
        type(screen, "txtSearch", project);
        press("cmdOpen")(screen);
    });
}

void planTemplates(Walker& walker) {
    walker.add("manage the templates", on("frmMainScreen"), press("cmdManageTemplates"));
    planProject(walker, "cmdAdd", "frmManageTemplates", "brightw", FirstTime);
    planTemplate(walker, walkedTemplate, unitabReports());
    walker.add("add one for invoices", on("frmManageTemplates"), press("cmdAdd"));
    planProject(walker, "cmdOpen", "frmTemplate", "harcourt");
    planTemplate(walker, "Walked: invoice charges", linkvaleReports());
    walker.add("add one for mobiles", on("frmManageTemplates"), press("cmdAdd"));
    planProject(walker, "cmdOpen", "frmTemplate", "o'dowd");
    planTemplate(walker, "Walked: tagged calls", mobileReports());
    walker.add("duplicate it", on("frmManageTemplates"), press("cmdDuplicate"));
    walker.add("make a schedule for the copy", on("frmManageTemplates"), press("cmdSchedule"));
    walker.add("leave the schedule", on("frmSchedule"), press("cmdExit"));
    const auto folder = std::make_shared<QTemporaryDir>(); // for the file
    const QString file = folder->filePath("templates.json");
    walker.add("export it", on("frmManageTemplates"), press("cmdExport"));
    walker.add("name the file", on("QFileDialog"), chooseFile(file));
    walker.add("hear that it was exported", onMessage("1 template has been exported"), answer("OK"));
    walker.add("import it", on("frmManageTemplates"), press("cmdImport"));
    walker.add("choose the file", on("QFileDialog"), chooseFile(file));
    walker.add("see what the import does", on("frmTemplateImport"),
               [folder](QWidget& screen) { press("cmdImport")(screen); });
    walker.add("hear that it was imported", onMessage("1 template has been imported"), answer("OK"));
    walker.add("leave the templates", on("frmManageTemplates"), press("cmdClose"));
}
