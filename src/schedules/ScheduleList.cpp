#include "schedules/ScheduleList.h"

#include "base/Session.h"
#include "db/DbError.h"
#include "db/ServerText.h"
#include "db/StoredTitle.h"

namespace {

std::pair<QString, int> subProjectKey(const TemplateHeader& header) {
    return {serverKey(header.unitabAccount), header.subLevel};
}

/// Empty when the account's cost centres cannot be read or the level does not exist.
QString countCostCentres(Connection& connection, const QString& account, int level) {
    if (level < 1 || level > 5 || account.isEmpty()) return {};
    const Name column(QString("CostCentre%1").arg(level));
    try {
        return QString::number(
            connection
                .query(
                    sql("SELECT Distinct {} FROM CostCentres.DBO.{} WITH (NOLOCK) WHERE UnitabAccount = {} "
                        "ORDER BY {}",
                        column, Name(account + "_TblCC"), account, column))
                .rowCount());
    } catch (const DbError& error) {
        if (error.connectionLost()) throw;
        return {}; // one account's broken table must not keep all schedules from being shown
    }
}

RecordSet readRows(Session& session) {
    return session.isAdministrator()
               ? session.db().query(sql("SELECT * FROM NorvaScheduler.dbo.tblschedule WITH (NOLOCK)"))
               : session.db().query(
                   sql("SELECT * FROM NorvaScheduler.dbo.tblschedule WITH (NOLOCK) Where Username = {}",
                       session.userName));
}

void describeTemplate(ScheduleListRow& row, const TemplateSummary& summary, const QString& subProjects) {
    row.templateTitle = summary.header.title;
    row.subProjects = !summary.header.isOrdinary();
    if (!row.subProjects) {
        row.contents = QString("Reports : %1").arg(summary.reportCount);
        return;
    }
    row.contents = "Sub Projects : " + (subProjects.isEmpty() ? QString("0") : subProjects);
    if (subProjects.isEmpty())
        row.problem = "No cost centres can be found for the template's account and level.";
}

} // namespace

ScheduleReading readSchedules(Session& session) {
    ScheduleReading reading{readRows(session), loadTemplateSummaries(session.db()), {}};
    for (const Row schedule : reading.schedules) {
        const auto found = reading.templates.constFind(schedule.integer("TemplateID"));
        if (found == reading.templates.constEnd() || found->header.isOrdinary()) continue;
        const TemplateHeader& header = found->header;
        if (!reading.subProjects.contains(subProjectKey(header)))
            reading.subProjects.insert(subProjectKey(header),
                                       countCostCentres(session.db(), header.unitabAccount, header.subLevel));
    }
    return reading;
}

std::vector<ScheduleListRow> ScheduleReading::rows() const {
    std::vector<ScheduleListRow> rows;
    rows.reserve(std::size_t(schedules.rowCount()));
    for (const Row schedule : schedules) {
        ScheduleListRow row;
        row.id = schedule.integer("ScheduleID");
        row.title = shownTitle(schedule.text("ScheduleTitle"));
        row.status = scheduleStatus(schedule.integer("Status"));
        row.project = schedule.text("ProjectRef");
        const QString date = schedule.text(isFinished(row.status) ? "RanDate" : "RunDate");
        row.shownDate = shownStoredDate(date);
        row.date = WallClock::fromStored(date);
        const auto summary = templates.constFind(schedule.integer("TemplateID"));
        if (summary != templates.constEnd())
            describeTemplate(row, *summary, subProjects.value(subProjectKey(summary->header)));
        else
            row.problem = "The template of this schedule no longer exists.";
        if (row.project.isEmpty()) row.problem = "This schedule names no project.";
        rows.push_back(std::move(row));
    }
    return rows;
}
