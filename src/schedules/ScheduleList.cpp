#include "schedules/ScheduleList.h"

#include "db/ServerText.h"
#include "db/StoredTitle.h"

namespace {

std::pair<QString, int> subProjectKey(const TemplateHeader& header) {
    return {serverKey(header.unitabAccount), header.subLevel};
}

using SubProjectKey = std::pair<QString, int>;

Sql countingOf(const TemplateHeader& header) {
    const Name column(QString("CostCentre%1").arg(header.subLevel));
    return sql("SELECT COUNT(*) FROM (SELECT Distinct {} FROM CostCentres.DBO.{} WITH (NOLOCK) "
               "WHERE UnitabAccount = {}) AS Centres",
               column, Name(header.unitabAccount + "_TblCC"), header.unitabAccount);
}

Sql readingOf(const ScheduleUser& user) {
    return user.isAdministrator
               ? sql("SELECT * FROM NorvaScheduler.dbo.tblschedule WITH (NOLOCK)")
               : sql("SELECT * FROM NorvaScheduler.dbo.tblschedule WITH (NOLOCK) Where Username = {}",
                     user.name);
}

/// How many of the level's cost centres, all of which are counted, the template makes files for.
QString madeOf(const TemplateSummary& summary, const QString& counted) {
    switch (summary.header.subType) {
    case TickedCostCentres:
        return QString("The template makes %1: those of the cost centres that are ticked in it.")
            .arg(summary.tickedCentres);
    case EveryCentreAndNone:
        return QString("The template makes %1: one more, for the numbers without a cost centre.")
            .arg(counted.toInt() + 1);
    default:
        return QString("The template makes all %1.").arg(counted);
    }
}

void describeTemplate(ScheduleListRow& row, const TemplateSummary& summary, const QString& subProjects) {
    row.templateTitle = summary.header.title;
    row.subProjects = !summary.header.isOrdinary();
    if (!row.subProjects) {
        row.contents = QString("Reports : %1").arg(summary.reportCount);
        return;
    }
    row.contents = "Sub Projects : " + (subProjects.isEmpty() ? QString("0") : subProjects);
    if (!subProjects.isEmpty())
        row.contentsNote = madeOf(summary, subProjects);
    else
        row.problem = "No cost centres can be found for the template's account and level.";
}

} // namespace

ScheduleReading readSchedules(Connection& connection, const ScheduleUser& user) {
    QList<Sql> readings = templateSummaryReadings();
    readings.prepend(readingOf(user));
    std::vector<RecordSet> answers = connection.queryAll(readings);
    ScheduleReading reading{answers[0], templateSummaries(std::span(answers).subspan(1)), {}};
    QMap<SubProjectKey, Sql> countings;
    const int templateId = reading.schedules.column("TemplateID");
    for (const Row schedule : reading.schedules) {
        const auto found = reading.templates.constFind(schedule.integer(templateId));
        if (found == reading.templates.constEnd() || found->header.isOrdinary()) continue;
        const TemplateHeader& header = found->header;
        const bool countable =
            header.subLevel >= 1 && header.subLevel <= 5 && !header.unitabAccount.isEmpty();
        if (countable) countings.insert(subProjectKey(header), countingOf(header));
    }
    // One account's broken table must not keep all schedules from being shown.
    const std::vector<RecordSet> counts = connection.queryEach(countings.values());
    for (std::size_t i = 0; const SubProjectKey& key : countings.keys()) {
        const RecordSet& count = counts[i++];
        reading.subProjects.insert(key, count.isEmpty() ? QString() : count.cell(0, 0).toString());
    }
    return reading;
}

ScheduleListRow ScheduleReading::row(const Row& schedule) const {
    ScheduleListRow row;
    row.id = schedule.integer("ScheduleID");
    row.title = shownTitle(schedule.text("ScheduleTitle"));
    row.status = scheduleStatus(schedule.integer("Status"));
    row.project = schedule.text("ProjectRef");
    const QString date = schedule.text(isFinished(row.status) ? "RanDate" : "RunDate");
    row.shownDate = shownStoredDate(date);
    row.date = WallClock::fromStored(date);
    row.owner = schedule.text("Username");
    if (isFinished(row.status) && row.date && !row.date->isZeroDate())
        if (const auto due = WallClock::fromStored(schedule.text("RunDate")))
            row.delay = due->secsTo(*row.date);
    row.templateId = schedule.integer("TemplateID");
    const auto summary = templates.constFind(row.templateId);
    if (summary != templates.constEnd())
        describeTemplate(row, *summary, subProjects.value(subProjectKey(summary->header)));
    else
        row.problem = "The template of this schedule no longer exists.";
    if (row.project.isEmpty()) row.problem = "This schedule names no project.";
    return row;
}

ScheduleChanges ScheduleReading::all() const {
    ScheduleChanges changes;
    changes.complete = true;
    changes.rows.reserve(std::size_t(schedules.rowCount()));
    for (const Row schedule : schedules) changes.rows.push_back(row(schedule));
    return changes;
}

/// Whether schedules of a template say the same about it.
bool ScheduleReading::describesAs(const ScheduleReading& earlier, int templateId) const {
    const auto now = templates.constFind(templateId);
    const auto then = earlier.templates.constFind(templateId);
    if (now == templates.constEnd() || then == earlier.templates.constEnd())
        return now == templates.constEnd() && then == earlier.templates.constEnd();
    const auto key = subProjectKey(now->header);
    return *now == *then && subProjects.value(key) == earlier.subProjects.value(key);
}

ScheduleChanges ScheduleReading::changesSince(const ScheduleReading& earlier) const {
    const bool sameTemplates = templates == earlier.templates && subProjects == earlier.subProjects;
    if (sameTemplates && schedules == earlier.schedules) return {};
    if (schedules.columns() != earlier.schedules.columns()) return all();
    QHash<int, int> places; // of the earlier rows
    places.reserve(earlier.schedules.rowCount());
    const int id = schedules.column("ScheduleID");
    const int templateId = schedules.column("TemplateID");
    for (const Row schedule : earlier.schedules) places.insert(schedule.integer(id), int(schedule.place()));
    ScheduleChanges changes;
    for (const Row schedule : schedules) {
        const auto place = places.constFind(schedule.integer(id));
        const bool same = place != places.constEnd() && schedule == earlier.schedules.row(*place)
                          && (sameTemplates || describesAs(earlier, schedule.integer(templateId)));
        if (!same) changes.rows.push_back(row(schedule));
        if (place != places.constEnd()) places.erase(place);
    }
    changes.gone.assign(places.keyBegin(), places.keyEnd());
    return changes;
}
