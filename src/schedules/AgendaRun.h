#pragma once

#include "schedules/RunWatch.h"

/// A run of a schedule on the time axis: one to come, one under way or one that is over.
struct AgendaRun {
    enum Length {
        Unknown,   ///< the server stores one time for a run
        Estimated, ///< from runs of its template that were watched
        SoFar,     ///< it is running
        Watched,   ///< from begin to end
    };

    ScheduleListRow schedule;
    WallClock start;
    qint64 seconds = 0; ///< 0 for an unknown length
    Length length = Unknown;
    int watched = 0;  ///< runs of its template that an estimate is made of
    QString status{}; ///< in words, with how long it is overdue or running
    bool delayed = false;

    int id() const { return schedule.id; }
    WallClock end() const { return start.addSecs(seconds); }
    /// One that waits can be put to another time.
    bool isMovable() const {
        return schedule.status == ScheduleStatus::Pending || schedule.status == ScheduleStatus::Disabled;
    }
    /// "about 5 Mins", "5 Mins", "not known".
    QString lengthText() const;
    /// All that is known of it, a line for each.
    QString description() const;
    /// Whether each of the words stands in any of its texts, without regard to case.
    bool holds(const QStringList& words) const;
};

/// Nothing for a schedule whose stored time is none.
std::optional<AgendaRun> agendaRun(const ScheduleListRow& schedule, const RunWatch& watch, const Moment& now);
