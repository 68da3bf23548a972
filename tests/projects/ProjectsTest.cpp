#include "db/DbError.h"
#include "projects/ProjectList.h"
#include "projects/frmSQLServerDatabases.h"
#include "projects/modProjectUpdate.h"
#include "projects/modProjects.h"
#include "support/Controls.h"
#include "support/Files.h"
#include "support/Rows.h"
#include "support/TestClass.h"
#include "support/TestProgram.h"
#include "support/failing.h"
#include "ui/uctListView.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QToolButton>

Q_DECLARE_METATYPE(Sql)

/// Finding, choosing and updating projects.
class ProjectsTest : public QObject {
    Q_OBJECT

    /// A database that may be a project, whose bill table is made by the given statement.
    static void addDatabase(TestProgram& program, const QString& name, const Sql& table) {
        program.addDatabase(name);
        DefaultDatabase inside(program.other(), name);
        if (!table.isEmpty()) program.other().execute(table);
    }
    static Sql bills(const QString& account) {
        return sql(
            "CREATE TABLE Tbl50 (UnitabAccount varchar(50), BillID int, RecID int, LocID int, Flags int, "
            "CurrentUnitabAccount varchar(50)) INSERT INTO Tbl50 VALUES ({}, 1, 1, 0, 0, {})",
            account, account);
    }

private slots:
    void databasesOfEveryKind_data() {
        const Rows<QString, Sql, QString> row;
        row("blank and hyphen", "New - Project", bills("BW10023"), "listed");
        row("apostrophe and brackets", "O'Neil [x]y", bills("BW10023"), "listed");
        row("archive in any case", "My_arChive_1", bills("BW10023"), "");
        row("no bill table", "Letters", sql("CREATE TABLE Other (x int)"), "");
        row("empty bill table", "Nothing yet", sql("CREATE TABLE Tbl50 (UnitabAccount varchar(50))"),
            "left out");
        row("account without cost centres", "Orphan", bills("none"), "left out");
        row("hostile account", "Hostile", bills("x'; DROP TABLE Tbl50 --"), "left out");
        row("bill table of another kind", "Odd", sql("CREATE TABLE Tbl50 (Something int)"), "left out");
    }

    void databasesOfEveryKind() {
        const auto [name, table, found] = thisRow<QString, Sql, QString>();
        TestProgram program;
        program.logIn();
        addDatabase(program, name, table);
        for (int run = 0; run < 2; ++run) {
            const ProjectList list = loadProjectList(program.session);
            QCOMPARE(list.names.contains(name), found == "listed");
            QCOMPARE(list.leftOut.contains(name), found == "left out");
            QVERIFY(list.names.contains("Brightwater"));
        }
        const QByteArray log = readFile(program.session.log.path());
        QCOMPARE(log.contains((name + " appears to have no cost centres").toUtf8()), found == "left out");
        QCOMPARE(program.session.db().defaultDatabase(), QString("NorvaScheduler"));
    }

    void aProcedureThatAnotherUserHasJustMadeIsRun() {
        TestProgram program;
        program.logIn();
        program.fault.meanwhile("CREATE PROCEDURE spGetProjectList", [&] {
            program.other().execute(sql("CREATE PROCEDURE spGetProjectList @ArchivesOnly BIT AS SELECT 'made "
                                        "elsewhere' AS [name], 0 AS HasCC"));
        });
        QCOMPARE(loadProjectList(program.session).names, QStringList("made elsewhere"));
    }

    void theChooserSelectsAsOneTypes() {
        TestProgram program;
        program.logIn();
        frmSQLServerDatabases screen(program.context);
        QCOMPARE(screen.Setup(), 0);
        QVERIFY(program.messages.takeShown().value(0).startsWith("Some imported projects appear"));
        QVERIFY(!screen.findChild<QToolButton*>("cmdOpen")->isEnabled());
        auto* search = screen.findChild<QLineEdit*>("txtSearch");
        QTest::keyClick(search, Qt::Key_Return);
        QCOMPARE(program.messages.takeShown(),
                 QStringList("You must select a project in the list before clicking open."));
        search->setText("PEV");
        QCOMPARE(screen.selectedProject(), QString("Peverell Networks"));
        search->setText("PEVx"); // begins nothing: the selection stays
        QCOMPARE(screen.selectedProject(), QString("Peverell Networks"));
        auto* list = screen.findChild<uctListView*>("List1");
        const QAbstractItemModel& shown = *list->model();
        QCOMPARE(shown.rowCount(), 5);
        for (const bool turned : {false, true}) { // the first in the order shown
            ListViewColumnSort(*list, 0, false);
            const QString first = shown.index(0, 0).data().toString();
            QCOMPARE(first.startsWith('B'), !turned);
            search->setText(first.left(1));
            QCOMPARE(screen.selectedProject(), first);
        }
        QTest::keyClick(search, Qt::Key_Return);
        QCOMPARE(screen.result(), int(QDialog::Accepted));
        search->setText("nowhere bw10"); // holds nothing
        search->setText("unitab bw10");
        QCOMPARE(screen.selectedProject(), QString("Brightwater"));

        frmSQLServerDatabases narrowed(program.context);
        QCOMPARE(narrowed.Setup("hl20417"), 0);          // as the server compares accounts
        QVERIFY(program.messages.takeShown().isEmpty()); // what is left out was told
        QCOMPARE(texts(child<uctListView>(narrowed, "List1")), QStringList("Harcourt-Lisle"));
        child<QCheckBox>(narrowed, "chkAccount").setChecked(false);
        QCOMPARE(child<uctListView>(narrowed, "List1").model()->rowCount(), 5);
    }

    void aProjectThatCannotBeUsedLeavesTheFormerOne() {
        TestProgram program;
        program.logIn();
        QVERIFY(useProject(program.context, nullptr, "Brightwater"));
        QCOMPARE(program.session.project.billType, 1);
        QVERIFY(program.session.project.wispera && program.session.project.defaultEnd.isValid());
        for (const char* name : {"Sundries", "No such one", "Quillon Trust", "Vantry Estates"}) {
            QVERIFY(!useProject(program.context, nullptr, name));
            QCOMPARE(program.messages.takeShown().size(), 1);
            QCOMPARE(program.session.project.database, QString("Brightwater"));
            QCOMPARE(program.session.db().defaultDatabase(), QString("NorvaScheduler"));
        }
    }

    void timeBandsAtTheirEdges_data() {
        const Rows<QString, QString, QString> row;
        row("before seven", "2008-04-01", "0659", "C");
        row("at seven", "2008-04-01", "0700", "D");
        row("at nineteen", "2008-04-01", "1900", "D");
        row("after nineteen", "2008-04-01", "1901", "C");
        row("the day before keeps its band", "2008-03-31", "0659", "X");
        row("saturday", "2008-04-05", "1200", "W");
        row("sunday", "2008-04-06", "0300", "W");
    }

    void timeBandsAtTheirEdges() {
        const auto [date, time, band] = thisRow<QString, QString, QString>();
        TestProgram program;
        program.logIn();
        openProject(program.session, "Marchetti2007");
        Connection& other = program.other();
        other.execute(sql("DELETE FROM Marchetti2007.dbo.TblCallRecords"));
        addTimeBandColumns(program.session);
        addTimeBandColumns(program.session); // nothing left to add
        const auto refuse = [](const QString&) { return false; };
        const auto agree = [](const QString&) { return true; };
        const auto quiet = [](int, int) {};
        QVERIFY(updateTimeBands(program.session, true, refuse, quiet)); // no calls: nobody is asked
        other.execute(sql(
            "INSERT INTO Marchetti2007.dbo.TblCallRecords (BillID, CallingNo, CalledNo, [Date], CallTime, "
            "Duration, OrigCost, TimeBand) VALUES (1, '1', '2', {}, {}, 60, 1, 'X')",
            date, time));
        QVERIFY(!updateTimeBands(program.session, true, refuse, quiet));
        for (int run = 0; run < 2; ++run) {
            QVERIFY(updateTimeBands(program.session, true, agree, quiet));
            const RecordSet calls =
                other.query(sql("SELECT * FROM Marchetti2007.dbo.TblCallRecords ORDER BY RecID"));
            QCOMPARE(calls.row(0).text("TimeBand"), band);
            QCOMPARE(calls.row(0).text("TimeBandCopy"), band);
            QCOMPARE(calls.row(0).text("Timeband0818"), QString("X"));
            if (band == "X") QCOMPARE(calls.row(0).text("Timeband0719"), QString("C"));
            if (run == 0) // calls that are imported later; one has no band and is too old to be given one
                other.execute(
                    sql("INSERT INTO Marchetti2007.dbo.TblCallRecords (BillID, CallingNo, CalledNo, [Date], "
                        "CallTime, Duration, OrigCost, TimeBand) VALUES (2, '1', '2', {}, {}, 60, 1, 'Y'), "
                        "(2, '1', '2', '2007-05-01', '0900', 60, 1, '')",
                        date, time));
        }
        QVERIFY(updateTimeBands(program.session, true, refuse, quiet)); // nothing is left to ask about
    }

    void aBrokenUpdateKeepsTheOldBands() {
        TestProgram program;
        program.logIn();
        openProject(program.session, "Marchetti2007");
        addTimeBandColumns(program.session);
        const Sql bands =
            sql("SELECT COUNT(DISTINCT TimeBand), MIN(TimeBandCopy) FROM Marchetti2007.dbo.TblCallRecords");
        const QString before = program.other().scalar(bands);
        for (int k = 1; k <= 10; ++k) {
            bool done = false;
            survives(program.fault, k,
                     [&] { done = updateTimeBands(program.session, false, {}, [](int, int) {}); });
            if (done) break;
            const RecordSet after = program.other().query(bands);
            QCOMPARE(after.cell(0, 0), before);
            QVERIFY(after.cell(0, 1).isEmpty());
        }
        QVERIFY(updateTimeBands(program.session, false, {}, [](int, int) {}));
        CheckForCurrentUnitabAccountField(program.session, true); // which this project lacks
        QCOMPARE(program.other().scalar(sql("SELECT COUNT(*) FROM Marchetti2007.dbo.Tbl50 WHERE "
                                            "ISNULL(CurrentUnitabAccount, '') = ''")),
                 QString("0"));
    }
};

static const AnnounceTest<ProjectsTest> announced;
#include "ProjectsTest.moc"
