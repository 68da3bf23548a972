#include "commands/Schedules.h"

#include "base/Session.h"
#include "schedules/clsSchedule.h"
#include "schedules/modScheduler.h"

#include <algorithm>
#include <tuple>

namespace {

QString isoDate(const QString& stored) {
    const auto date = WallClock::fromStored(stored);
    if (!date) return stored.trimmed().isEmpty() ? QString() : shownStoredDate(stored);
    return date->isZeroDate() ? QString() : date->iso();
}

QJsonValue jsonDate(const QString& stored) {
    const auto date = WallClock::fromStored(stored);
    return date && !date->isZeroDate() ? QJsonValue(date->iso()) : QJsonValue();
}

/// As scripts compare it.
QString statusWord(ScheduleStatus status) {
    using enum ScheduleStatus;
    switch (status) {
    case Disabled:
        return "disabled";
    case Processing:
        return "processing";
    case CompletedWithErrors:
        return "completed-with-errors";
    case Completed:
        return "completed";
    default:
        return "pending";
    }
}

auto order(const SeenSchedule& schedule) {
    const ScheduleListRow& row = schedule.row;
    return std::tuple(isFinished(row.status), row.date ? row.date->order() : 0, row.id);
}

} // namespace

QString SeenSchedule::due() const {
    return isoDate(runDate);
}

QString SeenSchedule::ran() const {
    return isoDate(ranDate);
}

QString SeenSchedule::status() const {
    return row.status == ScheduleStatus::Pending ? dueText(row.date, WallClock::now())
                                                 : statusText(row.status);
}

QStringList SeenSchedule::cells() const {
    return {row.title, status(), due(), ran(), row.contents, row.templateTitle, row.project};
}

QJsonObject SeenSchedule::json() const {
    return {{"id", row.id},
            {"title", row.title},
            {"status", statusWord(row.status)},
            {"statusText", status()},
            {"due", jsonDate(runDate)},
            {"ran", jsonDate(ranDate)},
            {"contents", row.contents},
            {"template", row.templateTitle},
            {"project", row.project},
            {"owner", row.owner},
            {"problem", row.problem}};
}

QList<SeenSchedule> seenSchedules(Session& session) {
    const ScheduleReading reading =
        readSchedules(session.db(), {session.userName, session.isAdministrator()});
    QList<SeenSchedule> seen;
    seen.reserve(reading.schedules.rowCount());
    auto stored = reading.schedules.begin();
    for (ScheduleListRow& row : reading.all().rows) { // in the order of the rows that they are made from
        seen.append({std::move(row), (*stored).text("RunDate"), (*stored).text("RanDate")});
        ++stored;
    }
    std::ranges::sort(seen, {}, order);
    return seen;
}

SeenSchedule findSchedule(Session& session, const QString& name) {
    const QList<SeenSchedule> seen = seenSchedules(session);
    QList<Named> all;
    for (const SeenSchedule& schedule : seen) all << Named{schedule.row.id, schedule.row.title};
    const QString none = session.isAdministrator() ? "There is no schedule %1." : "You have no schedule %1.";
    const int id = oneNamed(all, name, "schedules", none.arg(quoted(name)));
    return *std::ranges::find(seen, id, [](const SeenSchedule& schedule) { return schedule.row.id; });
}

std::optional<SeenSchedule> findSchedule(Session& session, int id) {
    for (const SeenSchedule& schedule : seenSchedules(session))
        if (schedule.row.id == id) return schedule;
    return {};
}

std::vector<LogEntry> logOf(Session& session, const SeenSchedule& schedule) {
    clsSchedule loaded(session);
    loaded.LoadSchedule(schedule.row.id);
    return readScheduleLog(session, schedule.row.id, loaded.Template());
}
