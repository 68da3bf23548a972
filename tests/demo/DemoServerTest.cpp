#include "demo/DemoProject.h"
#include "demo/DemoUser.h"
#include "demo/SchedulerContent.h"
#include "support/TestClass.h"
#include "support/TestProgram.h"

#include "app/cLogin.h"
#include "app/modCreateDB.h"
#include "db/DbError.h"
#include "projects/ProjectList.h"
#include "projects/modProjectUpdate.h"
#include "projects/modProjects.h"
#include "schedules/ScheduleList.h"
#include "templates/clsTemplate.h"

#include <QDir>
#include <QTest>

namespace {

class DemoServerTest : public QObject {
    Q_OBJECT

private slots:
    void usersLogIn_data();
    void usersLogIn();
    void firstLoginMakesTheSchedulerDatabase();
    void projectsAreListed();
    void projectsOpenWithTheirBillType();
    void olderProjectCanBeUpdated();
    void everyScheduleIsShown();
    void storedReportsAreInTheCatalogue();
    void manySchedulesAreFilledIn();
    void anUnfinishedServerIsReplaced();
};

void DemoServerTest::usersLogIn_data() {
    QTest::addColumn<QString>("user");
    QTest::addColumn<QString>("password");
    QTest::addColumn<int>("result");
    QTest::addColumn<int>("level");
    for (const DemoUser& user : DemoUser::all())
        QTest::addRow("%s", qPrintable(user.name))
            << user.name << QString(DemoUser::password)
            << int(user.level == 5 ? LoginOutcome::EndProgram : LoginOutcome::Done) << user.level;
    QTest::addRow("administrator") << "QuorraAdmin" << QString(DemoServer::loginPassword)
                                   << int(LoginOutcome::Done) << 1;
    QTest::addRow("administrator, other case")
        << "QuorraAdmin" << QString(DemoServer::loginPassword).toUpper() << int(LoginOutcome::Done) << 1;
    QTest::addRow("administrator as a user")
        << "quorraadmin" << QString(DemoServer::loginPassword) << int(LoginOutcome::Stay) << 0;
    QTest::addRow("wrong password") << "Amelia.Hart"
                                    << "demo-passwort" << int(LoginOutcome::Stay) << 0;
}

void DemoServerTest::usersLogIn() {
    QFETCH(QString, user);
    QFETCH(QString, password);
    QFETCH(int, result);
    QFETCH(int, level);
    TestProgram program;
    cLogin login(program.session, [] { return false; });
    const LoginOutcome outcome = login.logIn(program.server(), user, password);
    QVERIFY2(int(outcome.result) == result, qPrintable(outcome.message));
    QCOMPARE(program.session.userLevel, level);
    const bool restricted = level == 4 && !program.session.costCentres.first().isEmpty();
    QCOMPARE(restricted, level == 4);
}

void DemoServerTest::firstLoginMakesTheSchedulerDatabase() {
    TestProgram program(false);
    Session& session = program.session;
    cLogin login(session, [&] {
        createFromScripts(session, [](const QString&) {});
        return true;
    });
    const LoginOutcome outcome = login.logIn(program.server(), "QuorraAdmin", DemoServer::loginPassword);
    QVERIFY2(outcome.result == LoginOutcome::Done, qPrintable(outcome.message));
    QVERIFY(!session.serverDefaults.dataFolder.isEmpty());
    QVERIFY(readSchedules(session).rows().empty());
}

void DemoServerTest::projectsAreListed() {
    TestProgram program;
    program.logIn();
    QStringList expected;
    QStringList leftOut;
    for (const DemoProject& project : demoProjects::all()) {
        if (project.isListed()) expected << project.database;
        if (project.is(DemoProject::WithoutCentres)) leftOut << project.database;
    }
    const ProjectList list = loadProjectList(program.session);
    QCOMPARE(QSet<QString>(list.names.begin(), list.names.end()),
             QSet<QString>(expected.begin(), expected.end()));
    QCOMPARE(list.leftOut, leftOut);
}

void DemoServerTest::projectsOpenWithTheirBillType() {
    TestProgram program;
    program.logIn();
    for (const DemoProject& project : demoProjects::all()) {
        if (!project.isListed()) continue;
        openProject(program.session, project.database);
        QCOMPARE(program.session.project.unitabAccount, project.account);
        QCOMPARE(program.session.project.billType, project.billType);
        QCOMPARE(program.session.project.wispera, project.is(DemoProject::Wispera));
        QVERIFY(program.session.project.defaultStart < program.session.project.defaultEnd);
        QVERIFY(masterCostCentresExist(program.session));
    }
    QVERIFY_THROWS_EXCEPTION(DbError, openProject(program.session, "Quillon Trust"));
}

void DemoServerTest::olderProjectCanBeUpdated() {
    TestProgram program;
    program.logIn();
    Session& session = program.session;
    openProject(session, "Marchetti2007");
    const auto bandsAt = [&](const QDate& date) {
        const RecordSet calls =
            session.db().query(sql("SELECT DISTINCT CallTime, TimeBand FROM Marchetti2007.dbo.TblCallRecords "
                                   "WHERE [Date] = {} AND CallTime IN ('0659', '0700', '1900', '1901') "
                                   "ORDER BY CallTime, TimeBand",
                                   date));
        QString bands;
        for (const Row call : calls) bands += call.text(1);
        return bands;
    };
    QCOMPARE(bandsAt({2008, 4, 1}), QString("CCCC"));
    addTimeBandColumns(session);
    QVERIFY(updateTimeBands(
        session, true, [](const QString&) { return true; }, [](int, int) {}));
    QCOMPARE(bandsAt({2008, 4, 1}), QString("CDDC"));
    QCOMPARE(bandsAt({2008, 3, 31}), QString("CCCC"));
    QCOMPARE(bandsAt({2008, 4, 5}), QString("WWWW"));

    CheckForCurrentUnitabAccountField(session, true);
    QCOMPARE(session.db().scalar(sql(
                 "SELECT COUNT(*) FROM Marchetti2007.dbo.Tbl50 WHERE ISNULL(CurrentUnitabAccount, '') = ''")),
             QString("0"));
}

void DemoServerTest::everyScheduleIsShown() {
    TestProgram program;
    program.logIn();
    const auto rows = readSchedules(program.session).rows();
    QSet<int> states;
    qsizetype broken = 0;
    for (const ScheduleListRow& row : rows) {
        states.insert(row.status);
        if (!row.problem.isEmpty())
            ++broken;
        else
            QVERIFY2(row.contents.section(" : ", 1).toInt() > 0, qPrintable(row.title));
    }
    QCOMPARE(states, (QSet<int>{0, 1, 2, 3, 4, 7}));
    QCOMPARE(broken, 1);

    program.logIn("Amelia.Hart");
    const auto own = readSchedules(program.session).rows();
    QVERIFY(!own.empty() && own.size() < rows.size());
}

void DemoServerTest::storedReportsAreInTheCatalogue() {
    TestProgram program;
    program.logIn();
    const RecordSet templates = program.session.db().query(
        sql("SELECT TemplateID, UnitabAccount FROM NorvaScheduler.dbo.tblTemplate"));
    for (const Row row : templates) {
        for (const DemoProject& project : demoProjects::all())
            if (project.account == row.text(1) && project.isListed())
                openProject(program.session, project.database);
        clsTemplate stored(program.session.db(), program.session.project);
        QVERIFY(stored.LoadTemplate(row.integer(0)));
        for (const clsReport& report : stored.Reports()) {
            const auto choice = ListChoice::forProject(report.ReportType(), program.session.project.billType,
                                                       program.session.project.wispera);
            QVERIFY2(catalogueEntry(report.ReportType(), report.ReportSubType(), choice),
                     qPrintable(stored.Title() + ": " + report.GetReportTitle()));
        }
    }
}

void DemoServerTest::manySchedulesAreFilledIn() {
    TestProgram program;
    program.logIn();
    Connection& db = program.session.db();
    db.execute(sql("DELETE FROM NorvaScheduler.dbo.tblSchedule"));
    schedulerContent::fillSchedules(db, 1200, 20, 3);
    const qint64 before = db.statementCount();
    const auto rows = readSchedules(program.session).rows();
    QVERIFY(db.statementCount() - before < 10);
    QCOMPARE(rows.size(), std::size_t(1200));
    for (const ScheduleListRow& row : rows) QCOMPARE(row.contents, QString("Reports : 3"));
}

void DemoServerTest::anUnfinishedServerIsReplaced() {
    const QTemporaryDir folder;
    const QString path = folder.filePath("server.db");
    QFile leftover(path + ".unfinished");
    QVERIFY(leftover.open(QIODevice::WriteOnly) && leftover.write("half a server") > 0);
    leftover.close();
    DemoOptions options = DemoOptions::small();
    options.callRecords = 0;
    options.schedulerDatabase = false;
    DemoServer::build(path, options);
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files), QStringList{"server.db"});
    QVERIFY_THROWS_EXCEPTION(std::runtime_error, DemoServer::build(path, options));
}

const AnnounceTest<DemoServerTest> announced;

} // namespace

#include "DemoServerTest.moc"
