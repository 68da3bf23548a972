#include "demo/walk/SubProjectRoad.h"

#include "demo/walk/Controls.h"
#include "demo/walk/TemplateRoad.h"
#include "ui/uctListView.h"

#include <QDateTimeEdit>

void planSubProjects(Walker& walker) {
    walker.add("open the options again", on("frmMainScreen"), press("cmdOptions"));
    walker.add("open the e-mail settings", on("frmOptions"), press("cmdEmail"));
    walker.add("add an address", on("frmEmailSettings"), press("cmdAdd"));
    walker.add("choose the level", on("frmMailSelection"),
               [](QWidget& screen) { choose(screen, "cmbLevel", "Level 2"); });
    walker.add("choose its cost centre",
               on("frmMailSelection",
                  [](QWidget& screen) { return !list(screen, "lstCentres").rows().rows().empty(); }),
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
    planProject(walker, "cmdOpen", "frmSchedule", "brightw");
    walker.add("set up sub-projects", on("frmSchedule"), [](QWidget& screen) {
        type(screen, "txtTitle", "Walked: every department");
        press("cmdCCSub")(screen);
    });
    walker.add("name the sub-project template", on("frmTransfer"), [](QWidget& screen) {
        type(screen, "txtTemplate", "Walked: departments");
        tick(screen, "OptCC2");
        tick(screen, "Option1");
        press("chkEmailFiles")(screen);
    });
    walker.add("hear that e-mails can be large", onMessage("Cost centre sub projects can be very large"),
               answer("OK"));
    walker.add("save the sub-project template", on("frmTransfer"), press("cmdSave"));
    walker.add("hear that files are over-written", onMessage("Any existing files"), answer("OK"));
    walker.add("choose it", on("frmSchedule"), [](QWidget& screen) {
        choose(screen, "cmbTemplate", "Walked: departments");
        control<QTimeEdit>(screen, "dtRunOnTime").setTime(QTime::currentTime().addSecs(2));
        press("cmdSave")(screen);
    });
    walker.add("see it run", statusIs("Walked: every department", "Completed"), [](QWidget&) {});
}
