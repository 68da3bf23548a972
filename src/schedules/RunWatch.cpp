#include "schedules/RunWatch.h"

#include <algorithm>

namespace {

constexpr qint64 longestGap = 120; // seconds between readings; beyond it a run was not watched
constexpr int mostLengths = 20;    // of a template; its reports, and their data, change with time

template <class Key, class Value>
std::optional<Value> found(const QHash<Key, Value>& values, const Key& key) {
    const auto place = values.constFind(key);
    return place == values.constEnd() ? std::nullopt : std::optional(*place);
}

} // namespace

void RunWatch::take(const ScheduleChanges& changes, const Moment& now) {
    const bool watched = !m_last || m_last->secsTo(now) <= longestGap;
    m_last = now;
    const auto former = changes.complete ? std::exchange(m_waiting, {}) : m_waiting;
    for (const ScheduleListRow& schedule : changes.rows) {
        const std::optional<Waiting> before = found(former, schedule.id);
        m_waiting.remove(schedule.id);
        if (isFinished(schedule.status)) {
            if (watched && before && before->since) end(schedule, *before->since, now);
            continue;
        }
        m_seen.remove(schedule.id); // it is to run again
        Waiting& waiting = m_waiting[schedule.id];
        waiting.running = schedule.status == ScheduleStatus::Processing;
        if (!waiting.running || !before) continue;
        if (before->running)
            waiting.since = before->since;
        else if (watched)
            waiting.since = now;
    }
    for (const int id : changes.gone) {
        m_waiting.remove(id);
        m_seen.remove(id);
    }
}

/// A reset ends no run: it leaves no time, or that of an earlier run.
void RunWatch::end(const ScheduleListRow& schedule, const Moment& begin, const Moment& now) {
    if (schedule.delay.value_or(-1) < 0) return;
    const qint64 length = begin.secsTo(now);
    m_seen.insert(schedule.id, {begin.wall, length});
    QList<qint64>& lengths = m_lengths[schedule.templateId];
    lengths << length;
    if (lengths.size() > mostLengths) lengths.removeFirst();
}

std::optional<Moment> RunWatch::runningSince(int scheduleId) const {
    return m_waiting.value(scheduleId).since;
}

std::optional<RunWatch::Seen> RunWatch::seen(int scheduleId) const {
    return found(m_seen, scheduleId);
}

std::optional<qint64> RunWatch::usualLength(int templateId) const {
    QList<qint64> lengths = m_lengths.value(templateId);
    if (lengths.isEmpty()) return {};
    std::ranges::sort(lengths);
    return lengths[lengths.size() / 2];
}
