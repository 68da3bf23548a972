#include "demo/DemoEngine.h"
#include "app/openServer.h"
#include "base/WallClock.h"
#include "db/DbError.h"
#include "demo/DemoServer.h"
#include "projects/modProjects.h"
#include "schedules/ScheduleStatus.h"
#include "support/TestClass.h"
#include "support/TestProgram.h"
#include "templates/clsTemplate.h"

#include <atomic>
#include <thread>

namespace {

using enum ScheduleStatus;

class DemoEngineTest : public QObject {
    Q_OBJECT

    int idOf(const QString& title) {
        return m_db->scalar(sql("SELECT ScheduleID FROM tblSchedule WHERE ScheduleTitle = {}", title))
            .toInt();
    }
    int statusOf(const QString& title) {
        return m_db->scalar(sql("SELECT [Status] FROM tblSchedule WHERE ScheduleTitle = {}", title)).toInt();
    }
    RecordSet logOf(const QString& title) {
        return m_db->query(sql("SELECT * FROM tblLogs WHERE ScheduleID = {} ORDER BY LogID", idOf(title)));
    }

    Connection connection() const { return m_program->other().another("NorvaScheduler"); }

    std::unique_ptr<TestProgram> m_program;
    std::unique_ptr<Connection> m_db;
    WallClock m_now;

private slots:
    void init() {
        m_db.reset(); // before the server that it reads, of which there is only one at a time
        m_program.reset();
        m_program = std::make_unique<TestProgram>();
        m_db = std::make_unique<Connection>(connection());
        m_now = WallClock::now();
    }

    void dueSchedulesEndAsTheirContentsSay() {
        DemoEngine engine(*m_db);
        QCOMPARE(engine.runDueSchedules(m_now), 4);
        QCOMPARE(statusOf("Linkvale check, overdue some days"), int(Completed));
        QCOMPARE(logOf("Linkvale check, overdue some days").rowCount(), 4);
        QCOMPARE(statusOf("Template gone"), int(CompletedWithErrors));
        QCOMPARE(logOf("Template gone").row(0).integer("ReportID"), -1);
        QCOMPARE(statusOf("Cost centre packs"), int(Pending));
        QCOMPARE(statusOf("No run date"), int(Pending));
        QCOMPARE(engine.runDueSchedules(m_now), 0);

        m_db->execute(
            sql("UPDATE tblSchedule SET ProjectRef = 'No such project' WHERE ScheduleTitle LIKE 'Invoice%'"));
        QCOMPARE(engine.runDueSchedules(m_now.addDays(400)), 8);
        QCOMPARE(statusOf("Cost centre packs"), int(Completed));
        QVERIFY(logOf("Cost centre packs").rowCount() > 5);
        QCOMPARE(statusOf("Dormant figures 2001"),
                 int(CompletedWithErrors)); // there are no calls of that year
        QCOMPARE(statusOf("Invoice [final] 100%"), int(CompletedWithErrors));
        QCOMPARE(statusOf("Switched off"), int(Disabled));
        QCOMPARE(statusOf("Status of a later version"), 7);
        const QString ran =
            m_db->scalar(sql("SELECT RanDate FROM tblSchedule WHERE ScheduleTitle = 'Cost centre packs'"));
        QCOMPARE(WallClock::fromStored(ran)->stored(), ran);
    }

    /// A newcomer may pick any report that the first project offers, and sees it succeed.
    void everyOfferedReportIsKnown() {
        m_program->logIn();
        openProject(m_program->session, "Brightwater");
        const CurrentProject& project = m_program->session.project;
        clsTemplate all(*m_db, project);
        all.setTitle("All");
        all.setUnitabAccount(project.unitabAccount);
        all.setBillType(project.billType);
        for (int type = BillingReport; type <= MobileReport; ++type)
            for (const auto* entry :
                 catalogueEntries(type, ListChoice::forProject(type, project.billType, true))) {
                QString key;
                const auto parameters = std::make_shared<clsReportParameters>(project);
                parameters->setCallsNotToNumber(QString("01234567890,").repeated(400));
                all.Reports().Add(0, parameters, type, entry->id, true, false, false, key);
            }
        const qsizetype reports = all.Reports().Count();
        QCOMPARE(all.SaveTemplate(), int(clsTemplate::Saved));
        m_db->execute(sql("UPDATE tblSchedule SET TemplateID = {}, ProjectRef = 'Brightwater' "
                          "WHERE ScheduleTitle = 'Linkvale check, overdue some days'",
                          all.ID()));
        DemoEngine engine(*m_db, [&] { engine.stop(); });
        QCOMPARE(engine.runDueSchedules(m_now), 1);
        const RecordSet log = logOf("Linkvale check, overdue some days");
        for (const Row row : log) QVERIFY2(row.integer("ErrorCode") == 0, qPrintable(row.text("ReportName")));
        QCOMPARE(log.rowCount(), reports);
        QCOMPARE(statusOf("Linkvale check, overdue some days"), int(Completed));
    }

    void aRunIsSeenAsProcessing() {
        QList<int> seen;
        Connection watcher = connection();
        DemoEngine engine(*m_db, [&] {
            seen << watcher.scalar(sql("SELECT COUNT(*) FROM tblSchedule WHERE [Status] = 2")).toInt();
            engine.stop();
        });
        QCOMPARE(engine.runDueSchedules(m_now), 1);
        QCOMPARE(seen, QList<int>{2}); // with the one that another engine has left so
        QCOMPARE(statusOf("Linkvale check, overdue some days"), int(Completed)); // the oldest came first
    }

    void aRunResetByAUserStaysReset() {
        Connection user = connection();
        const QString title = "Linkvale check, overdue some days";
        DemoEngine engine(*m_db, [&] {
            engine.stop();
            user.execute(sql("UPDATE tblSchedule SET [Status] = 3 WHERE ScheduleTitle = {}", title));
        });
        QCOMPARE(engine.runDueSchedules(m_now), 0);
        QCOMPARE(statusOf(title), int(CompletedWithErrors));
        QVERIFY(logOf(title).isEmpty());
    }

    void aScheduleThatWasPutOffIsNotRun() {
        Connection user = connection();
        DemoEngine engine(*m_db, [&] {
            user.execute(
                sql("UPDATE tblSchedule SET RunDate = {} WHERE [Status] = 0", m_now.addDays(1).stored()));
        });
        QCOMPARE(engine.runDueSchedules(m_now), 1);
    }

    void enginesNeverShareASchedule() {
        m_db->execute(
            sql("UPDATE tblSchedule SET RunDate = {} WHERE [Status] = 0", m_now.addDays(-1).stored()));
        const int due = m_db->scalar(sql("SELECT COUNT(*) FROM tblSchedule WHERE [Status] = 0")).toInt();
        QVERIFY(due > 10);
        std::atomic<int> finished = 0;
        std::atomic<int> started = 0;
        std::vector<std::thread> engines;
        for (int i = 0; i < 3; ++i)
            engines.emplace_back([&] {
                Connection own = connection();
                DemoEngine engine(own, [&] { ++started; });
                finished += engine.runDueSchedules(m_now);
            });
        for (std::thread& engine : engines) engine.join();
        QCOMPARE(int(started), due);
        QCOMPARE(int(finished), due);
        QCOMPARE(
            m_db->scalar(sql("SELECT COUNT(*) FROM (SELECT ScheduleID, ReportID, ReportName FROM tblLogs "
                             "GROUP BY ScheduleID, ReportID, ReportName HAVING COUNT(*) > 1) twice")),
            QString("0"));
    }

    void aLostConnectionLosesNoRun_data() {
        QTest::addColumn<int>("step");
        for (int step = 1; step <= 14; ++step) QTest::addRow("step %d", step) << step;
    }

    void aLostConnectionLosesNoRun() {
        QFETCH(int, step);
        m_db->execute(
            sql("DELETE FROM tblSchedule WHERE ScheduleTitle <> 'Linkvale check, overdue some days'"));
        Fault fault;
        fault.lost = true;
        Connection shaky(m_db->connectionString(), [&](const ConnectionString& target) {
            return std::make_unique<FaultyServer>(openServer(target), fault);
        });
        DemoEngine engine(shaky);
        fault.arm(step);
        for (int attempt = 0; attempt < 3; ++attempt) {
            try {
                engine.runDueSchedules(m_now);
            } catch (const DbError& error) {
                QVERIFY2(error.connectionLost(), qPrintable(error.text()));
            }
        }
        QCOMPARE(statusOf("Linkvale check, overdue some days"), int(Completed));
        QCOMPARE(logOf("Linkvale check, overdue some days").rowCount(), 4);
    }
};

const AnnounceTest<DemoEngineTest> announced;

} // namespace

#include "DemoEngineTest.moc"
