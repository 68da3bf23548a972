#include "projects/modCostCentres.h"
#include "projects/modProjects.h"
#include "support/TestClass.h"
#include "support/TestProgram.h"
#include "support/failing.h"

/// The users' copies of a project's cost-centre allocation.
class CostCentresTest : public QObject {
    Q_OBJECT

    static int count(TestProgram& program, const QString& database, const QString& table,
                     const Sql& where = sql("1 = 1")) {
        return program.other()
            .scalar(sql("SELECT COUNT(*) FROM {}.dbo.{} WHERE {}", Name(database), Name(table), where))
            .toInt();
    }
    static void open(TestProgram& program, const QString& user = Session::serverLoginName,
                     const QString& project = "Brightwater") {
        program.logIn(user);
        openProject(program.session, project);
    }

private slots:
    void aFirstRunCopiesTheMaster() {
        TestProgram program;
        open(program, "Maeve.O'Connor"); // the name becomes part of tables and procedures
        prepareAccountCostCentres(program.session, true);
        const QString table = userTable(program.session);
        const int master = count(program, "CostCentres", masterTable("BW10023"));
        QVERIFY(master > 0);
        QCOMPARE(count(program, "CostCentres", table), master);
        QCOMPARE(count(program, "Brightwater", table), master);
        QCOMPARE(count(program, "CostCentres", userCentresTable(program.session)),
                 count(program, "CostCentres", masterCentresTable("BW10023")));
        QCOMPARE(program.session.db().defaultDatabase(), QString("NorvaScheduler"));
        QCOMPARE(readCostCentres(program.session, 1, CostCentreSource::UserInProject),
                 readCostCentres(program.session, 1, CostCentreSource::Master));
    }

    void aSecondRunAddsOnlyWhatTheMasterGained() {
        TestProgram program;
        open(program);
        prepareAccountCostCentres(program.session, true);
        const Name copy(userTable(program.session));
        const int before = count(program, "CostCentres", userTable(program.session));
        program.other().execute(
            sql("UPDATE CostCentres.dbo.{} SET CostCentre1 = N'Mine' WHERE ID = 1", copy));
        program.other().execute(
            sql("INSERT INTO CostCentres.dbo.BW10023_TblCC (UnitabAccount, CostCentre1, TelNo) "
                "VALUES ('BW10023', 'New''s', '0999'), ('BW10023', NULL, '0998'), ('other', 'x', '0997')"));
        program.other().execute(
            sql("UPDATE CostCentres.dbo.{} SET TelNo = NULL WHERE ID = 1", copy)); // hides nothing
        program.other().execute(sql("DELETE FROM CostCentres.dbo.BW10023_TblCC WHERE ID = 1"));
        for (int run = 0; run < 2; ++run) { // the second finds nothing to add
            prepareAccountCostCentres(program.session, false);
            QCOMPARE(count(program, "CostCentres", userTable(program.session)), before + 2);
            QCOMPARE(count(program, "Brightwater", userTable(program.session)), before + 2);
        }
        QCOMPARE(count(program, "Brightwater", userTable(program.session), sql("CostCentre1 = 'Mine'")), 1);
        QVERIFY(readCostCentres(program.session, 1, CostCentreSource::UserInProject).contains("New's"));
    }

    void twoUsersDoNotDisturbEachOther() {
        TestProgram program;
        open(program, "Tom.Becker");
        prepareAccountCostCentres(program.session, true);
        const QString toms = userTable(program.session);
        program.other().execute(sql("UPDATE CostCentres.dbo.{} SET CostCentre1 = N'Tom''s'", Name(toms)));
        open(program, "Priya.Nair");
        prepareAccountCostCentres(program.session, true);
        QCOMPARE(count(program, "CostCentres", toms, sql("CostCentre1 <> 'Tom''s'")), 0);
        QCOMPARE(count(program, "CostCentres", userTable(program.session), sql("CostCentre1 = 'Tom''s'")), 0);
    }

    void aBrokenRunIsMadeGoodByTheNext() {
        TestProgram program;
        open(program);
        const int master = count(program, "CostCentres", masterTable("BW10023"));
        for (int k = 1; k <= 20; ++k) {
            survives(program.fault, k, [&] { prepareAccountCostCentres(program.session, true); });
            prepareAccountCostCentres(program.session, true);
            QCOMPARE(count(program, "Brightwater", userTable(program.session)), master);
            QCOMPARE(program.session.db().defaultDatabase(), QString("NorvaScheduler"));
        }
    }
};

static const AnnounceTest<CostCentresTest> announced;
#include "CostCentresTest.moc"
