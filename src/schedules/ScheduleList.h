#pragma once

#include "base/WallClock.h"
#include "db/RecordSet.h"
#include "schedules/ScheduleStatus.h"
#include "templates/TemplateSummary.h"

#include <QMap>
#include <QString>
#include <vector>

struct Session;

/// One schedule as the main screen shows it.
struct ScheduleListRow {
    int id = 0;
    QString title;
    ScheduleStatus status = ScheduleStatus::Pending;
    QString project;
    QString shownDate;             ///< of the last run for finished schedules, else of the run to come
    std::optional<WallClock> date; ///< the same; nothing where the stored text is no date
    QString contents;              ///< "Reports : 3", "Sub Projects : 12"
    QString templateTitle;
    bool subProjects = false;
    QString problem; ///< why the schedule cannot be run or edited; empty when it can
};

/// All that the main screen shows of the schedules that the session's user sees, as it was read: his own
/// schedules, or everybody's for the administrator. Comparing two readings is much quicker than making
/// rows of one.
struct ScheduleReading {
    RecordSet schedules;
    QHash<int, TemplateSummary> templates;
    /// How many cost centres an account (its serverKey) has at a level; empty when they cannot be read.
    QMap<std::pair<QString, int>, QString> subProjects;

    bool operator==(const ScheduleReading&) const = default;
    std::vector<ScheduleListRow> rows() const;
};

/// The number of statements is three, and one more for each cost-centre table and level that the
/// sub-project templates of these schedules use, however many schedules there are.
ScheduleReading readSchedules(Session& session);
