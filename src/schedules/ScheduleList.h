#pragma once

#include "base/WallClock.h"
#include "db/RecordSet.h"
#include "schedules/ScheduleStatus.h"
#include "templates/TemplateSummary.h"

#include <QMap>
#include <QString>
#include <vector>

class Connection;

/// One schedule as the main screen shows it.
struct ScheduleListRow {
    int id = 0;
    QString title;
    ScheduleStatus status = ScheduleStatus::Pending;
    QString project;
    QString shownDate;             ///< of the last run for finished schedules, else of the run to come
    std::optional<WallClock> date; ///< the same; nothing where the stored text is no date
    QString contents;              ///< "Reports : 3", "Sub Projects : 12"
    QString contentsNote;          ///< how many of the sub projects the template really makes
    int templateId = 0;
    QString templateTitle;
    bool subProjects = false;
    QString owner;
    std::optional<qint64> delay; ///< seconds from the time it was due to that of its run, when both are known
    QString problem;             ///< why the schedule cannot be run or edited; empty when it can

    bool isDelayed(const WallClock& now) const {
        return status == ScheduleStatus::Pending && date && *date < now;
    }
};

/// Who reads: a user sees his own schedules, the administrator everybody's.
struct ScheduleUser {
    QString name;
    bool isAdministrator = false;
};

/// What a list of schedules has to change to show the present.
struct ScheduleChanges {
    std::vector<ScheduleListRow> rows; ///< new ones, and those that are not what they were
    std::vector<int> gone;             ///< identifiers
    bool complete = false;             ///< `rows` are all there are
};

/// All that the main screen shows of the schedules that a user sees, as it was read. Comparing two readings
/// is much quicker than making rows of one.
struct ScheduleReading {
    RecordSet schedules;
    QHash<int, TemplateSummary> templates;
    /// How many cost centres an account (its serverKey) has at a level; empty when they cannot be read.
    QMap<std::pair<QString, int>, QString> subProjects;

    ScheduleChanges all() const;
    ScheduleChanges changesSince(const ScheduleReading& earlier) const;

private:
    ScheduleListRow row(const Row& schedule) const;
    bool describesAs(const ScheduleReading& earlier, int templateId) const;
};

/// One round trip, and one more where sub-project templates are scheduled, whose cost centres are counted.
ScheduleReading readSchedules(Connection& connection, const ScheduleUser& user);
