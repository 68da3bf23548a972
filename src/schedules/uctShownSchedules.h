#pragma once

#include "schedules/RunWatch.h"
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

    Rows take(const ScheduleChanges& changes, const Moment& now);
    /// A pending one's says how long it is overdue, a running one's since when it runs, where that is known.
    /// Nothing for a schedule that has ended.
    std::optional<ListCell> status(int id, const Moment& now) const;
    /// The template of a schedule that has not ended; 0 for any other.
    int templateOf(int id) const { return m_waiting.value(id).templateId; }
    /// Of a schedule that has not ended.
    std::optional<WallClock> dueDate(int id) const { return m_waiting.value(id).date; }
    /// What was seen of runs, brought up to date by each take().
    const RunWatch& runs() const { return m_runs; }
    /// The user looks at a result. Whether it was news until now.
    bool see(int id) { return m_news.remove(id); }
    /// "12 pending, 1 running, 3 delayed", of those that have not ended.
    QString counts(const WallClock& now) const;

private:
    QString m_userName;
    QHash<int, ScheduleListRow> m_waiting;
    RunWatch m_runs;
    QSet<int> m_news; ///< the user's own schedules that ran, and whose result he has not looked at
};
