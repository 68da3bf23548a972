#include "schedules/uctShownSchedules.h"

#include "base/modCommonFunctions.h"
#include "schedules/modScheduler.h"
#include "schedules/uctStatusIcon.h"
#include "ui/DateCell.h"
#include "ui/Palette.h"

namespace {

/// Empty below a minute, as in the status of a pending schedule.
ListCell delayCell(const std::optional<qint64>& seconds) {
    if (!seconds || *seconds <= 60) return {QString(), 0.0};
    return {durationText(*seconds, false), double(*seconds)};
}

std::vector<ListColumn> columns(const QString& date, const QString& fourth, bool withOwner) {
    std::vector<ListColumn> columns{{"Schedule Title", ListColumn::Text, 36},
                                    {"Status", ListColumn::Text, 42},
                                    {date, ListColumn::Text, 26},
                                    {fourth, ListColumn::Text, 22},
                                    {"Template", ListColumn::Text, 26},
                                    {"Project", ListColumn::Text, 18}};
    if (withOwner) columns.push_back({"Owner", ListColumn::Text, 15});
    return columns;
}

ListCell statusCell(const ScheduleListRow& schedule, const Moment& now,
                    const std::optional<Moment>& runningSince) {
    ListCell cell(statusText(schedule.status));
    if (schedule.status == ScheduleStatus::Pending) cell.text = dueText(schedule.date, now.wall);
    if (schedule.status == ScheduleStatus::Processing && runningSince && runningSince->secsTo(now) > 60)
        cell.text += " (" + durationText(runningSince->secsTo(now), false) + ')';
    cell.icon = statusIcon(schedule.status, schedule.isDelayed(now.wall));
    return cell;
}

ListRow rowOf(const ScheduleListRow& schedule, const ListCell& status) {
    const bool finished = isFinished(schedule.status);
    ListRow row{schedule.id,
                {schedule.title, status, dateCell(schedule.shownDate, schedule.date),
                 finished ? delayCell(schedule.delay) : ListCell(schedule.contents), schedule.templateTitle,
                 schedule.project, schedule.owner}};
    row.toolTip = schedule.problem;
    if (!finished) row.cells[ShownSchedules::Contents].toolTip = schedule.contentsNote;
    if (!finished && schedule.subProjects) row.background = Palette::multiSelectCostCentre();
    return row;
}

} // namespace

std::vector<ListColumn> ShownSchedules::pendingColumns(bool withOwner) {
    return columns("Due To Run", "Reports/Sub Projects", withOwner);
}

std::vector<ListColumn> ShownSchedules::finishedColumns(bool withOwner) {
    return columns("Date/Time Ran", "Delay", withOwner);
}

ShownSchedules::Rows ShownSchedules::take(const ScheduleChanges& changes, const Moment& now) {
    Rows rows;
    m_runs.take(changes, now);
    const auto former = changes.complete ? std::exchange(m_waiting, {}) : m_waiting;
    for (const ScheduleListRow& schedule : changes.rows) {
        const bool wasWaiting = former.contains(schedule.id);
        if (isFinished(schedule.status)) {
            m_waiting.remove(schedule.id);
            if (wasWaiting && schedule.owner == m_userName) m_news.insert(*(rows.news = schedule.id));
            rows.finished.push_back(rowOf(schedule, statusCell(schedule, now, {})));
            if (!m_news.contains(schedule.id)) continue;
            rows.finished.back().emphasized = true;
            rows.finished.back().toolTip = "This result has not been looked at yet.";
        } else {
            m_news.remove(schedule.id); // it is to run again
            m_waiting.insert(schedule.id, schedule);
            rows.pending.push_back(
                rowOf(schedule, statusCell(schedule, now, m_runs.runningSince(schedule.id))));
        }
    }
    for (const int id : changes.gone) {
        m_waiting.remove(id);
        m_news.remove(id);
    }
    return rows;
}

std::optional<ListCell> ShownSchedules::status(int id, const Moment& now) const {
    const auto waiting = m_waiting.constFind(id);
    if (waiting == m_waiting.constEnd()) return {};
    return statusCell(*waiting, now, m_runs.runningSince(id));
}

QString ShownSchedules::counts(const WallClock& now) const {
    int running = 0;
    int delayed = 0;
    int disabled = 0;
    for (const ScheduleListRow& waiting : m_waiting) {
        running += waiting.status == ScheduleStatus::Processing;
        disabled += waiting.status == ScheduleStatus::Disabled;
        delayed += waiting.isDelayed(now);
    }
    QStringList counts{QString("%1 pending").arg(m_waiting.size() - running - disabled),
                       QString("%1 running").arg(running)};
    if (delayed > 0) counts << QString("%1 delayed").arg(delayed);
    if (disabled > 0) counts << QString("%1 disabled").arg(disabled);
    return counts.join(", ");
}
