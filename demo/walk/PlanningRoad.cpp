#include "demo/walk/PlanningRoad.h"

#include "demo/walk/Controls.h"
#include "demo/walk/TemplateRoad.h"
#include "ui/uctListView.h"

#include <QAction>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QLineEdit>
#include <QSpinBox>
#include <QTimer>

namespace {

/// An action of a list's menu, in a moment.
Walker::Act inMenu(const QString& listName, const QString& text) {
    return [=](QWidget& screen) {
        for (QAction* action : list(screen, listName).actions())
            if (QString(action->text()).remove('&') == text)
                return QTimer::singleShot(0, action, [action] { action->trigger(); });
        missingControl(screen, text);
    };
}

} // namespace

void planSeries(Walker& walker) {
    walker.add("add a schedule to be repeated", on("frmMainScreen"), press("cmdAdd"));
    walker.add("name the series", on("frmSchedule"),
               [](QWidget& screen) { type(screen, "txtTitle", "Walked: every week"); });
    planProject(walker, "cmdOpen", "frmSchedule", "brightw");
    walker.add("choose its template",
               on("frmSchedule",
                  [](QWidget& screen) { return control<QComboBox>(screen, "cmbTemplate").count() > 0; }),
               [](QWidget& screen) {
                   choose(screen, "cmbTemplate", walkedTemplate);
                   control<QDateEdit>(screen, "dtRunOn").setDate(QDate::currentDate().addDays(1));
                   control<QTimeEdit>(screen, "dtRunOnTime").setTime({7, 30});
               });
    walker.add("go to repeat it", on("frmSchedule"), press("cmdRepeat"));
    walker.add("choose every second week", on("frmSeries"), [](QWidget& screen) {
        choose(screen, "cmbUnit", "weeks");
        control<QSpinBox>(screen, "spnEvery").setValue(2);
        control<QSpinBox>(screen, "spnTimes").setValue(6);
    });
    walker.add("save the series", on("frmSeries"), press("cmdSave"));
    walker.add("see the series", on("frmMainScreen"), [](QWidget& screen) {
        type(screen, "txtFilterSchedules", "every week");
        inMenu("lstSchedules", "Select Series")(screen);
    });
    walker.add("go to change all of it", on("frmMainScreen"), inMenu("lstSchedules", "Change Selected…"));
    walker.add("choose another time and owner", on("frmChangeSchedules"), [](QWidget& screen) {
        tick(screen, "chkTime");
        control<QTimeEdit>(screen, "dtTime").setTime({6, 15});
        tick(screen, "chkOwner");
        choose(screen, "cmbOwner", "Priya.Nair");
    });
    walker.add("save the change", on("frmChangeSchedules"), press("cmdSave"));
    walker.add("agree to the change", onMessage("Are you sure you want to change the 6 selected schedules"),
               answer("&Yes"));
    walker.add("disable the series", on("frmMainScreen"), inMenu("lstSchedules", "Disable"));
    walker.add("agree to disable it", onMessage("Are you sure you want to change the 6 selected schedules"),
               answer("&Yes"));
    walker.add("see it disabled", on("frmMainScreen"), press("cmdDelete"));
    walker.add("delete the series", onMessage("Are you sure you want to delete the 6 selected schedules"),
               answer("&Yes"));
    walker.add("see the series gone", on("frmMainScreen"),
               [](QWidget& screen) { type(screen, "txtFilterSchedules", ""); });
}
