#pragma once

#include "schedules/ScheduleList.h"
#include "ui/ListModel.h"

#include <QSet>

/// What the main screen's two lists show: their columns, the rows that a reading changes, and what is
/// remembered of the schedules from one reading to the next.
class ShownSchedules {
public:
    enum Column { Title, Status, Date, Contents, Template };
    struct Rows {
        std::vector<ListRow> pending;
        std::vector<ListRow> finished;
        std::optional<int> news; ///< one of the user's own schedules, which has just ended
    };

    explicit ShownSchedules(const QString& userName) : m_userName(userName) {}

    /// With the owner for whoever sees the schedules of others.
    static std::vector<ListColumn> pendingColumns(bool withOwner);
    static std::vector<ListColumn> finishedColumns(bool withOwner);

    Rows take(const ScheduleChanges& changes, const WallClock& now);
    /// A pending one's says how long it is overdue, a running one's since when it runs, where that is known.
    /// Nothing for a schedule that has ended.
    std::optional<ListCell> status(int id, const WallClock& now) const;
    /// Of a schedule that has not ended.
    std::optional<WallClock> dueDate(int id) const { return m_waiting.value(id).schedule.date; }
    /// The user looks at a result. Whether it was news until now.
    bool see(int id) { return m_news.remove(id); }
    /// "12 pending, 1 running, 3 delayed", of those that have not ended.
    QString counts(const WallClock& now) const;

private:
    struct Waiting {
        ScheduleListRow schedule;
        std::optional<WallClock> runningSince; ///< of one that began to run under this program's eyes
    };

    QString m_userName;
    QHash<int, Waiting> m_waiting;
    QSet<int> m_news; ///< the user's own schedules that ran, and whose result he has not looked at
};
