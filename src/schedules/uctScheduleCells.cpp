#include "schedules/uctScheduleCells.h"

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

} // namespace

std::vector<ListColumn> scheduleCells::pendingColumns(bool withOwner) {
    return columns("Due To Run", "Reports/Sub Projects", withOwner);
}

std::vector<ListColumn> scheduleCells::finishedColumns(bool withOwner) {
    return columns("Date/Time Ran", "Delay", withOwner);
}

bool scheduleCells::isDelayed(const ScheduleListRow& schedule, const WallClock& now) {
    return schedule.status == ScheduleStatus::Pending && schedule.date && *schedule.date < now;
}

ListCell scheduleCells::status(const ScheduleListRow& schedule, const WallClock& now,
                               const std::optional<WallClock>& runningSince) {
    ListCell cell(statusText(schedule.status));
    if (schedule.status == ScheduleStatus::Pending) cell.text = dueText(schedule.date, now);
    if (schedule.status == ScheduleStatus::Processing && runningSince && runningSince->secsTo(now) > 60)
        cell.text += " (" + durationText(runningSince->secsTo(now), false) + ')';
    cell.icon = statusIcon(schedule.status, isDelayed(schedule, now));
    return cell;
}

ListRow scheduleCells::row(const ScheduleListRow& schedule, const WallClock& now,
                           const std::optional<WallClock>& runningSince) {
    const bool finished = isFinished(schedule.status);
    ListRow row{schedule.id,
                {schedule.title, status(schedule, now, runningSince),
                 dateCell(schedule.shownDate, schedule.date),
                 finished ? delayCell(schedule.delay) : ListCell(schedule.contents), schedule.templateTitle,
                 schedule.project, schedule.owner}};
    row.toolTip = schedule.problem;
    if (!finished && schedule.subProjects) row.background = Palette::multiSelectCostCentre();
    return row;
}
