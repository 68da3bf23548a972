#include "demo/SchedulerContent.h"

#include "base/Session.h"
#include "db/StoredTitle.h"
#include "demo/BulkInsert.h"
#include "demo/DemoProject.h"
#include "demo/DemoTemplates.h"
#include "schedules/ScheduleStatus.h"

namespace schedulerContent {

namespace {

using enum ScheduleStatus;

const QString administrator = Session::serverLoginName;
const QString amelia = "Amelia.Hart";
const QString priya = "Priya.Nair";

/// Rows of tblSchedule and tblLogs, one at a time because the logs need the schedules' keys.
class ScheduleWriter {
public:
    ScheduleWriter(Connection& connection, const WallClock& now)
        : m_connection(connection), m_now(now), m_templates(demoTemplates::create(connection, now.date())) {}

    /// `run` is in minutes from now.
    int add(const QString& title, const QString& templateTitle, qint64 run, ScheduleStatus status,
            const QString& user) {
        const WallClock when = m_now.addSecs(run * 60);
        const WallClock ran = isFinished(status) ? when.addSecs(95) : WallClock();
        return addRow(title, m_templates.value(templateTitle), when.stored(), status, ran.stored(), user);
    }
    /// Of a template that was deleted behind the Scheduler's back.
    int addOrphan(const QString& title, qint64 run, ScheduleStatus status, const QString& user) {
        return addRow(title, m_templates.lastId() + 1000, m_now.addSecs(run * 60).stored(), status,
                      WallClock().stored(), user);
    }
    int addWithRunDate(const QString& title, const QString& templateTitle, const QString& runDate,
                       const QString& user) {
        return addRow(title, m_templates.value(templateTitle), runDate, Pending, "", user);
    }
    void log(int scheduleId, int reportId, int errorCode, const QString& description,
             const QString& reportName) {
        m_connection.execute(
            sql("INSERT INTO NorvaScheduler.dbo.[tblLogs] ([ScheduleID], [ReportID], [ErrorCode], "
                "[ErrorDescription], [ReportName]) VALUES ({}, {}, {}, {}, {})",
                scheduleId, reportId, errorCode, description, reportName));
    }
    /// One row for each report of the template that the schedule ran; the first `failures` failed.
    void logRun(int scheduleId, const QString& templateTitle, int failures) {
        for (const DemoTemplates::Report& report : m_templates.reports(templateTitle)) {
            const bool failed = failures-- > 0;
            log(scheduleId, report.id, failed ? 17 : 0,
                failed ? "No calls were found for the report's parameters." : "", report.name);
        }
    }
    const DemoTemplates& templates() const { return m_templates; }

private:
    int addRow(const QString& title, int templateId, const QString& runDate, ScheduleStatus status,
               const QString& ranDate, const QString& user) {
        const QString id = m_connection.scalar(
            sql("INSERT INTO NorvaScheduler.dbo.[tblSchedule] ([ScheduleTitle], [TemplateID], [ProjectRef], "
                "[RunDate], "
                "[Status], [RanDate], [Username]) VALUES ({}, {}, {}, {}, {}, {}, {}); SELECT @@IDentity",
                storedTitle(title), templateId, m_templates.projectOf(templateId), runDate, status, ranDate,
                user));
        return int(id.toDouble());
    }

    Connection& m_connection;
    WallClock m_now;
    DemoTemplates m_templates;
};

constexpr qint64 Hour = 60;
constexpr qint64 Day = 24 * Hour;

void addPending(ScheduleWriter& writer) {
    using namespace demoTemplates;
    writer.add("March Management Pack", ManagementPack, 2 * Day, Pending, administrator);
    writer.add("O'Dowd monthly usage", IdcUsage, 5 * Hour, Pending, amelia);
    writer.add("\"Urgent\" circuit check", CircuitAudit, 25, Pending, amelia);
    writer.add("Invoice [final] 100%", InvoiceOnly, 9 * Day, Pending, priya);
    writer.add("Αναφορά κλήσεων Απριλίου", WeeklyReview, 3 * Day, Pending, amelia);
    writer.add("Quarterly trend figures, all divisions", ManagementPack, 80 * Day, Pending, administrator);
    writer.add("Cost centre packs", CentrePacks, 1 * Day, Pending, administrator);
    writer.add("Dormant figures 2001", Dormant, 14 * Day, Pending, "Maeve.O'Connor");
    writer.add("Weekly review, overdue a moment", WeeklyReview, 0, Pending, administrator);
    writer.add("Weekly review, overdue some hours", WeeklyReview, -3 * Hour - 12, Pending, amelia);
    writer.add("Linkvale check, overdue some days", LinkvaleCheck, -4 * Day - 7 * Hour, Pending,
               administrator);
    writer.add("Switched off", InvoiceOnly, 6 * Day, Disabled, administrator);
    writer.add("Hotspots being worked on", Hotspots, -20, Processing, amelia);
}

/// What the program has to put up with: rows that it never writes itself.
void addOdd(ScheduleWriter& writer) {
    using namespace demoTemplates;
    writer.add("Status of a later version", InvoiceOnly, 7 * Day, ScheduleStatus(7), administrator);
    writer.addOrphan("Template gone", -2 * Hour, Pending, administrator);
    writer.addWithRunDate("No run date", WeeklyReview, "", administrator);
    writer.addWithRunDate("Run date that is none", WeeklyReview, "as soon as possible", amelia);
}

void addFinished(ScheduleWriter& writer) {
    using namespace demoTemplates;
    const int clean =
        writer.add("February Management Pack", ManagementPack, -20 * Day, Completed, administrator);
    writer.logRun(clean, ManagementPack, 0);
    const int failed =
        writer.add("Weekly review of last week", WeeklyReview, -7 * Day, CompletedWithErrors, amelia);
    writer.logRun(failed, WeeklyReview, 2);
    const int centres =
        writer.add("Selected centres, first run", SelectedCentres, -2 * Day, Completed, amelia);
    for (const QString centre : {"Children's Services", "Operations"}) writer.log(centres, -1, 0, "", centre);

    // Names that the log view has to look up: of a report that is there, and of one deleted since.
    const int lookedUp =
        writer.add("Circuit audit with old log", CircuitAudit, -40 * Day, CompletedWithErrors, amelia);
    const auto reports = writer.templates().reports(CircuitAudit);
    writer.log(lookedUp, reports.front().id, 0, "", "");
    writer.log(lookedUp, reports.back().id + 5000, 9, "The file is open in another program: 'Circuits.xls'",
               "");

    const int reset =
        writer.add("Stuck run, reset", InvoiceOnly, -1 * Day, CompletedWithErrors, administrator);
    writer.log(reset, -1, -1, "Status reset by user", "");
    writer.add("Finished without log", InvoiceOnly, -300 * Day, Completed, priya);
}

void addAddresses(Connection& connection) {
    BulkInsert rows(connection, sql("INSERT INTO NorvaScheduler.dbo.tblMailAddresses VALUES"));
    const QString account = demoProjects::all().first().account;
    const QString freight = demoProjects::all().at(3).account;
    rows.add(account, QString("Warehouse"), QString("warehouse@brightwater.example.com"), 2);
    rows.add(account, QString("Engineers' Yard"), QString("yard@brightwater.example.com"), 2);
    rows.add(account, QString("Finance"), QString("finance@brightwater.example.com"), 1);
    rows.add(account, QString("No Cost Centre allocated"), QString("switchboard@brightwater.example.com"), 1);
    rows.add(freight, QString("Children's Services"), QString("m.o'connor@odowd.example.ie"), 1);
    rows.finish();
}

void addExcludedNumbers(Connection& connection, const DemoTemplates& templates) {
    BulkInsert rows(
        connection,
        sql("INSERT INTO NorvaScheduler.dbo.TblExcludedNumbers (TemplateID, TelNo, Include) VALUES"));
    for (const QString number : {"08001111000", "02079461042", "EMERGENCY"})
        rows.add(templates.value(demoTemplates::WeeklyReview), number, false);
    rows.add(templates.value(demoTemplates::ManagementPack), QString("02079461042"), false);
    rows.finish();
}

} // namespace

void fill(Connection& connection, const WallClock& now) {
    Transaction transaction(connection);
    ScheduleWriter writer(connection, now);
    addPending(writer);
    addOdd(writer);
    addFinished(writer);
    addAddresses(connection);
    addExcludedNumbers(connection, writer.templates());
    connection.execute(
        sql("INSERT INTO NorvaScheduler.dbo.tblOptions (OutputPath, Excel, CSV, DefaultEmail, MaxFileSize) "
            "VALUES ({}, 1, 0, {}, 10)",
            QString("C:\\Zelvan\\Output"), QString("reports@zelvan.example.com")));
    transaction.commit();
}

void fillSchedules(Connection& connection, int schedules, int templates, int reportsPerTemplate) {
    const WallClock now = WallClock::now();
    Transaction transaction(connection);
    const QList<int> templateIds = demoTemplates::createMany(connection, templates, reportsPerTemplate);
    BulkInsert rows(connection,
                    sql("INSERT INTO NorvaScheduler.dbo.tblSchedule (ScheduleTitle, TemplateID, ProjectRef, "
                        "RunDate, [Status], RanDate, Username) VALUES"));
    static const QList<ScheduleStatus> states{Pending, Pending, Completed, CompletedWithErrors, Disabled};
    for (int i = 0; i < schedules; ++i) {
        const ScheduleStatus status = states.at(i % states.size());
        const WallClock when = now.addSecs((isFinished(status) ? -1 : 1) * (i + 1) * 600);
        rows.add(QString("Schedule %1").arg(i + 1, 6, 10, QChar('0')), templateIds.at(i % templateIds.size()),
                 demoProjects::all().first().database, when.stored(), status,
                 (isFinished(status) ? when.addSecs(60) : WallClock()).stored(), administrator);
    }
    rows.finish();
    transaction.commit();
}

} // namespace schedulerContent
