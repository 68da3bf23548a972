#pragma once

#include <QString>
#include <vector>

struct Session;

/// One schedule as the main screen shows it.
struct ScheduleListRow {
    int id = 0;
    QString title;
    int status = 0;
    QString project;
    QString shownDate; ///< of the last run for finished schedules, else of the run to come
    QString contents;  ///< "Reports : 3", "Sub Projects : 12"
    QString templateTitle;
    bool subProjects = false;
    QString problem; ///< why the schedule cannot be run or edited; empty when it can
};

/// The schedules that the session's user sees: his own, or everybody's for the administrator. The
/// number of statements is three, and one more for each cost-centre table and level that
/// sub-project templates use, however many schedules there are.
std::vector<ScheduleListRow> loadScheduleList(Session& session);
