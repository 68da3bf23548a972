#include "demo/DemoEngine.h"

#include "db/DbError.h"
#include "db/StoredTitle.h"
#include "schedules/ScheduleStatus.h"
#include "templates/clsTemplate.h"

#include <algorithm>

namespace {

enum ErrorCode {
    NoError = 0,
    RunFailed = 10,
    TemplateGone = 11,
    UnknownReport = 13,
    NoCostCentres = 14,
    NoData = 17
};

/// Where a report looks first, and the column of its dates when its dates can be chosen.
struct Source {
    QString table;
    QString dateColumn;
};

Source sourceOf(int reportType, const CatalogueEntry& entry) {
    const bool dated = entry.offers(CallDatesGroup);
    switch (reportType) {
    case BillingReport:
        return {"Tbl50", {}};
    case CircuitReport:
        return {"TblCcts", {}};
    case InvoiceReport:
        return {"TblfInvoice", {}};
    default:
        if (entry.presence == Presence::OnlyWispera) return {"TblWisperaEvents", dated ? "EventDate" : ""};
        const bool ofMobiles = reportType == MobileReport || entry.lines == "M";
        return {ofMobiles ? "TblMobCalls" : "TblCallRecords", dated ? "Date" : ""};
    }
}

} // namespace

DemoEngine::DemoEngine(Connection& connection, std::function<void()> work,
                       std::function<void(const QString&)> tell)
    : m_connection(connection), m_work(std::move(work)), m_tell(std::move(tell)) {}

int DemoEngine::runDueSchedules(const WallClock& now) {
    int finished = 0;
    const auto runClaimed = [&] {
        finished += run(*m_claimed);
        m_claimed.reset();
    };
    const QList<DueSchedule> due = dueSchedules(now); // first of all, as it tells whether the server answers
    if (m_claimed) runClaimed();
    for (const DueSchedule& schedule : due) {
        if (m_stopped) break;
        if (!claim(schedule)) continue;
        m_claimed = schedule;
        runClaimed();
    }
    return finished;
}

/// The run date is text, which no server sorts by time.
QList<DemoEngine::DueSchedule> DemoEngine::dueSchedules(const WallClock& now) {
    const RecordSet pending = m_connection.query(sql(
        "SELECT [ScheduleID], [ScheduleTitle], [RunDate] FROM NorvaScheduler.dbo.[tblSchedule] WITH (NOLOCK) "
        "WHERE [Status] = {}",
        ScheduleStatus::Pending));
    QList<DueSchedule> due;
    for (const Row row : pending) {
        const QString stored = row.text("RunDate");
        const auto when = WallClock::fromStored(stored);
        if (!when || *when > now) continue; // without a run date there is no time to run it
        due.append({row.integer("ScheduleID"), shownTitle(row.text("ScheduleTitle")), stored, *when});
    }
    std::sort(due.begin(), due.end(), [](const DueSchedule& a, const DueSchedule& b) {
        return std::tie(a.runDate, a.title) < std::tie(b.runDate, b.title);
    });
    return due;
}

/// Of several engines only one finds the row still pending; none does when a user has just put the run
/// off.
bool DemoEngine::claim(const DueSchedule& schedule) {
    return m_connection.changedRows(sql("UPDATE NorvaScheduler.dbo.[tblSchedule] SET [Status] = {} "
                                        "WHERE [ScheduleID] = {} AND [Status] = {} AND [RunDate] = {}",
                                        ScheduleStatus::Processing, schedule.id, ScheduleStatus::Pending,
                                        schedule.storedRunDate))
           == 1;
}

bool DemoEngine::run(const DueSchedule& schedule) {
    m_tell(QString("Running \"%1\"…").arg(schedule.title));
    m_work();
    try {
        return finish(schedule, outcome(schedule.id));
    } catch (const DbError& error) {
        if (error.connectionLost()) throw;
        return finish(schedule, {{-1, RunFailed, error.text().left(2000), ""}});
    }
}

QList<DemoEngine::LogRow> DemoEngine::outcome(int scheduleId) {
    const RecordSet rows = m_connection.query(
        sql("SELECT [TemplateID], [ProjectRef] FROM NorvaScheduler.dbo.[tblSchedule] WHERE [ScheduleID] = {}",
            scheduleId));
    if (rows.isEmpty()) return {};
    CurrentProject project;
    project.database = rows.row(0).text("ProjectRef");
    const RecordSet bill =
        m_connection.query(sql("SELECT TOP 1 * FROM {}.dbo.Tbl50 ORDER BY BillID", Name(project.database)));
    if (!bill.isEmpty()) project.unitabAccount = bill.row(0).text("UnitabAccount");
    clsTemplate reportTemplate(m_connection, project);
    if (!reportTemplate.LoadTemplate(rows.row(0).integer("TemplateID")))
        return {{-1, TemplateGone, "The template of this schedule no longer exists.", ""}};
    return reportTemplate.TemplateType() == 0 ? reportRows(reportTemplate, project.database)
                                              : subProjectRows(reportTemplate);
}

QList<DemoEngine::LogRow> DemoEngine::reportRows(const clsTemplate& reportTemplate, const QString& project) {
    constexpr int longestName = 200; // of tblLogs
    QList<LogRow> rows;
    for (const clsReport& report : reportTemplate.Reports()) {
        const QString name = report.ShownTitle().left(longestName);
        if (!report.Entry())
            rows.append({report.ID(), UnknownReport, "This version knows no such report.", name});
        else if (!reportFindsData(report, project, reportTemplate.DefaultDates()))
            rows.append({report.ID(), NoData, "No data was found for the report's parameters.", name});
        else
            rows.append({report.ID(), NoError, "", name});
    }
    return rows;
}

/// The project's default dates are those of its bills: with them, everything that it holds counts.
bool DemoEngine::reportFindsData(const clsReport& report, const QString& project, bool defaultDates) {
    const Source source = sourceOf(report.ReportType(), *report.Entry());
    Sql count = sql("SELECT COUNT(*) FROM {}.dbo.{}", Name(project), Name(source.table));
    if (!source.dateColumn.isEmpty() && !defaultDates) {
        const Name date(source.dateColumn);
        count += sql(" WHERE {} >= {} AND {} < {}", date, report.Parameters()->DateRangeStart(), date,
                     report.Parameters()->DateRangeEnd().addDays(1));
    }
    try {
        return m_connection.scalar(count).toInt() > 0;
    } catch (const DbError& error) {
        if (error.number() != DbError::InvalidObject) throw;
        return false; // a project need not hold every kind of data
    }
}

/// One row for each cost centre that gets files of its own.
QList<DemoEngine::LogRow> DemoEngine::subProjectRows(const clsTemplate& subProjects) {
    QStringList centres;
    if (subProjects.CCSubType() == 2) {
        for (const clsString& chosen : subProjects.CCs()) centres << chosen.Value;
    } else {
        const Name level(QString("CostCentre%1").arg(subProjects.CCSubLevel()));
        const RecordSet found =
            m_connection.query(sql("SELECT Distinct {} FROM CostCentres.dbo.{} WHERE len({}) > 0 Order By {}",
                                   level, Name(subProjects.UnitabAccount() + "_TblCC"), level, level));
        for (const Row row : found) centres << row.text(0);
    }
    QList<LogRow> rows;
    for (const QString& centre : centres) rows.append({-1, NoError, "", centre});
    if (rows.isEmpty())
        rows.append(
            {-1, NoCostCentres, "No cost centres were found for the template's account and level.", ""});
    return rows;
}

/// False, with nothing written, when a user has reset or deleted the schedule meanwhile.
bool DemoEngine::finish(const DueSchedule& schedule, const QList<LogRow>& rows) {
    const bool failed =
        std::any_of(rows.begin(), rows.end(), [](const LogRow& row) { return row.errorCode != NoError; });
    const auto status = failed ? ScheduleStatus::CompletedWithErrors : ScheduleStatus::Completed;
    Transaction transaction(m_connection);
    const qint64 updated = m_connection.changedRows(
        sql("UPDATE NorvaScheduler.dbo.[tblSchedule] SET [Status] = {}, [RanDate] = {} "
            "WHERE [ScheduleID] = {} AND [Status] = {}",
            status, WallClock::now().stored(), schedule.id, ScheduleStatus::Processing));
    if (updated == 0) {
        m_tell(QString("\"%1\" was reset or deleted while it ran.").arg(schedule.title));
        return false;
    }
    for (const LogRow& row : rows)
        m_connection.execute(
            sql("INSERT INTO NorvaScheduler.dbo.[tblLogs] ([ScheduleID], [ReportID], [ErrorCode], "
                "[ErrorDescription], [ReportName]) VALUES ({}, {}, {}, {}, {})",
                schedule.id, row.reportId, row.errorCode, row.description, row.reportName));
    transaction.commit();
    m_tell(QString("\"%1\": %2.").arg(schedule.title, statusText(status)));
    return true;
}
