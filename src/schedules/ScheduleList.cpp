#include "schedules/ScheduleList.h"

#include "app/Session.h"
#include "app/modCommonFunctions.h"
#include "db/DbError.h"
#include "db/StoredTitle.h"
#include "schedules/ScheduleStatus.h"
#include "templates/TemplateSummary.h"

#include <QMap>

namespace {

/// Counts the cost centres of an account and level, each pair once.
class SubProjectCounter {
public:
    explicit SubProjectCounter(Connection& connection) : m_connection(connection) {}

    /// Empty when the account's cost centres cannot be read or the level does not exist.
    QString count(const QString& account, int level) {
        const auto key = std::make_pair(account.toCaseFolded(), level);
        if (!m_counts.contains(key)) m_counts.insert(key, read(account, level));
        return m_counts.value(key);
    }

private:
    QString read(const QString& account, int level) const {
        if (level < 1 || level > 5 || account.isEmpty()) return {};
        const Name column(QString("CostCentre%1").arg(level));
        try {
            return QString::number(
                m_connection
                    .query(sql("SELECT Distinct {} FROM CostCentres.DBO.{} WITH (NOLOCK) WHERE UnitabAccount = {} "
                               "ORDER BY {}",
                               column, Name(account + "_TblCC"), account, column))
                    .rowCount());
        } catch (const DbError& error) {
            if (error.connectionLost()) throw;
            return {}; // one account's broken table must not keep all schedules from being shown
        }
    }

    Connection& m_connection;
    QMap<std::pair<QString, int>, QString> m_counts;
};

RecordSet readSchedules(Session& session) {
    return session.isAdministrator()
               ? session.db().query(sql("SELECT * FROM NorvaScheduler.dbo.tblschedule WITH (NOLOCK)"))
               : session.db().query(
                   sql("SELECT * FROM NorvaScheduler.dbo.tblschedule WITH (NOLOCK) Where Username = {}",
                       session.userName));
}

void describeTemplate(ScheduleListRow& row, const TemplateSummary& summary, SubProjectCounter& subProjects) {
    const TemplateHeader& header = summary.header;
    row.templateTitle = header.title;
    row.subProjects = !header.isOrdinary();
    if (!row.subProjects) {
        row.contents = QString("Reports : %1").arg(summary.reportCount);
        return;
    }
    const QString count = subProjects.count(header.unitabAccount, header.subLevel);
    row.contents = "Sub Projects : " + (count.isEmpty() ? QString("0") : count);
    if (count.isEmpty()) row.problem = "No cost centres can be found for the template's account and level.";
}

} // namespace

std::vector<ScheduleListRow> loadScheduleList(Session& session) {
    const RecordSet schedules = readSchedules(session);
    const QHash<int, TemplateSummary> templates = loadTemplateSummaries(session.db());
    SubProjectCounter subProjects(session.db());

    std::vector<ScheduleListRow> rows;
    rows.reserve(std::size_t(schedules.rowCount()));
    for (const Row schedule : schedules) {
        ScheduleListRow row;
        row.id = schedule.integer("ScheduleID");
        row.title = shownTitle(schedule.text("ScheduleTitle"));
        row.status = schedule.integer("Status");
        row.project = schedule.text("ProjectRef");
        row.shownDate = shownStoredDate(schedule.text(isFinished(row.status) ? "RanDate" : "RunDate"));
        const auto summary = templates.constFind(schedule.integer("TemplateID"));
        if (summary != templates.constEnd()) describeTemplate(row, *summary, subProjects);
        else row.problem = "The template of this schedule no longer exists.";
        if (row.project.isEmpty()) row.problem = "This schedule names no project.";
        rows.push_back(std::move(row));
    }
    return rows;
}
