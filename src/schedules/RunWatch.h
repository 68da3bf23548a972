#pragma once

#include "base/Moment.h"
#include "schedules/ScheduleList.h"

#include <QHash>
#include <QList>

/// What readings that follow each other tell about the length of runs. The server stores a single time for a
/// run and none for its log rows, so a length is known of those runs only that began and ended between two
/// readings of this program. Lengths are in seconds, and exact to the time between two readings.
class RunWatch {
public:
    struct Seen {
        WallClock begin;
        qint64 seconds = 0;
    };

    void take(const ScheduleChanges& changes, const Moment& now);
    /// Of a schedule that is running; nothing where it ran already when it was seen first.
    std::optional<Moment> runningSince(int scheduleId) const;
    /// A schedule's run that is over.
    std::optional<Seen> seen(int scheduleId) const;
    /// How many runs of a template were seen from begin to end: the latest ones.
    int count(int templateId) const { return int(m_lengths.value(templateId).size()); }
    /// The median of these; nothing where there are none.
    std::optional<qint64> usualLength(int templateId) const;

private:
    struct Waiting {
        bool running = false;
        std::optional<Moment> since;
    };

    void end(const ScheduleListRow& schedule, const Moment& begin, const Moment& now);

    std::optional<Moment> m_last;        ///< reading
    QHash<int, Waiting> m_waiting;       ///< by schedule, all that have not ended
    QHash<int, Seen> m_seen;             ///< by schedule
    QHash<int, QList<qint64>> m_lengths; ///< by template
};
