#include "db/SchedulerDatabase.h"
#include "db/ServerDefaults.h"
#include "support/Files.h"
#include "support/Rows.h"
#include "support/TestClass.h"
#include "support/TestProgram.h"
#include "support/failing.h"

/// Creation and upgrades of the scheduler database, from every older state.
class SchedulerDatabaseTest : public QObject {
    Q_OBJECT

    static constexpr const char* laterColumns[] = {
        "Distance15",      "Distance16",    "Distance17", "Distance18",     "Distance19",
        "Distance20",      "Distance21",    "Distance22", "Distance23",     "UserId",
        "CallClassParams", "LineSelection", "BillIds",    "CostCentreLevel"};

    /// An old table: only the columns that every version had and those of `later` that are set.
    static void makeOldReportTable(Connection& db, int later) {
        db.execute(sql("DROP TABLE tblTemplate_Report"));
        db.execute(
            sql("CREATE TABLE tblTemplate_Report (ReportID int IDENTITY(1,1) PRIMARY KEY, TemplateID int, "
                "Distance14 bit NOT NULL DEFAULT 0)"));
        for (int i = 0; i < int(std::size(laterColumns)); ++i)
            if (later & (1 << i))
                db.execute(
                    sql("ALTER TABLE tblTemplate_Report ADD {} [varchar] (30) NULL", Name(laterColumns[i])));
        db.execute(sql("INSERT INTO tblTemplate_Report (TemplateID, Distance14) VALUES (1, 1), (1, 0)"));
    }

private slots:
    void anySubsetOfLaterColumnsComesOutWhole_data() {
        QTest::addColumn<int>("later");
        QTest::newRow("none") << 0;
        QTest::newRow("bands to 17") << 0b111;
        QTest::newRow("every other one") << 0b01010101010101;
        QTest::newRow("the others") << 0b10101010101010;
        QTest::newRow("all but the first") << 0b11111111111110;
        QTest::newRow("all") << 0b11111111111111;
    }

    void anySubsetOfLaterColumnsComesOutWhole() {
        QFETCH(int, later);
        TestProgram program;
        program.logIn();
        Connection& db = program.session.db();
        makeOldReportTable(db, later);
        for (int run = 1; run <= 2; ++run) { // the second run finds nothing to do
            upgradeAtLogin(db);
            upgradeAtMainScreen(db);
            const RecordSet rows = db.query(sql("SELECT * FROM tblTemplate_Report ORDER BY ReportID"));
            for (const char* column : laterColumns) QVERIFY(rows.column(column) >= 0);
            const bool moved = !(later & 1);
            QCOMPARE(rows.row(0).flag("Distance14"), !moved);
            if (moved) QVERIFY(rows.row(0).flag("Distance17") && !rows.row(1).flag("Distance17"));
            if (!(later & (1 << 3))) QCOMPARE(rows.row(0).text("Distance18"), QString("0"));
            if (!(later & (1 << 9))) QCOMPARE(rows.row(0).text("UserId"), QString(""));
            if (!(later & (1 << 13))) QCOMPARE(rows.row(1).text("CostCentreLevel"), QString("1"));
            // What a user has set since must not be moved again.
            if (run == 1 && moved) {
                db.execute(sql("UPDATE tblTemplate_Report SET Distance14 = 1, Distance17 = 0"));
                upgradeAtLogin(db);
                QCOMPARE(db.scalar(sql("SELECT MIN(CAST(Distance14 AS int)) FROM tblTemplate_Report")),
                         QString("1"));
                db.execute(sql("UPDATE tblTemplate_Report SET Distance14 = 0, Distance17 = 2 - ReportID"));
            }
        }
    }

    void aBrokenUpgradeLeavesNoHalfMove() {
        TestProgram program;
        program.logIn();
        Connection& db = program.session.db();
        for (int k = 1; k <= 12; ++k) {
            makeOldReportTable(db, 0);
            survives(program.fault, k, [&] { upgradeAtLogin(db); });
            upgradeAtLogin(db);
            const RecordSet row =
                db.query(sql("SELECT Distance14, Distance17 FROM tblTemplate_Report ORDER BY ReportID"));
            QVERIFY2(!row.row(0).flag(0) && row.row(0).flag(1), qPrintable(QString::number(k)));
        }
    }

    void firstLoginsThatMeetUpgradeOnce() {
        for (const auto& [upgrade, set, kept] :
             {std::tuple{+[](Connection& db) { upgradeAtLogin(db); }, sql("Distance14 = 1, Distance17 = 0"),
                         sql("Distance17 = 0")},
              std::tuple{+[](Connection& db) { upgradeAtMainScreen(db); }, sql("CostCentreLevel = 3"),
                         sql("CostCentreLevel = 3")}}) {
            TestProgram program;
            program.logIn();
            Connection& db = program.session.db();
            makeOldReportTable(db, 0);
            program.fault.meanwhile("begin", [&] { // both have found the columns missing
                upgrade(program.other());
                program.other().execute(sql("UPDATE tblTemplate_Report SET {}", set));
            });
            upgrade(db);
            QCOMPARE(db.scalar(sql("SELECT COUNT(*) FROM tblTemplate_Report WHERE {}", kept)), QString("2"));
        }
    }

    void exclusionsWithoutTemplateDisappear() {
        TestProgram program;
        program.logIn();
        Connection& db = program.session.db();
        const QString kept = db.scalar(sql("SELECT MIN(TemplateID) FROM NorvaScheduler.dbo.tblTemplate"));
        db.execute(sql("DROP TABLE TblExcludedNumbers"));
        upgradeAtLogin(db);
        db.execute(sql(
            "INSERT INTO TblExcludedNumbers (TemplateID, TelNo) VALUES ({}, '1'), (-1, '2'), (99999, '3')",
            kept.toInt()));
        upgradeAtLogin(db);
        QCOMPARE(db.scalar(sql("SELECT COUNT(*) FROM TblExcludedNumbers")), QString("1"));
        QCOMPARE(db.scalar(sql("SELECT TelNo FROM TblExcludedNumbers")), QString("1"));
    }

    void serverDefaults_data() {
        const Rows<QByteArray, QString, QString> row;
        row("from the server", QByteArray(), "*", "*");
        row("from the file", "DATA=E:\\Data\r\nLog=F:\\Logs\\\r\nDATAEXTENSION=\r\nOTHER=x\r\n",
            "E:\\Data\\|.dbf", "F:\\Logs\\");
        row("other extensions", "DATA=/var/\xe9=1/\nDATAEXTENSION=.mdf\n", "/var/é=1/|.mdf", "");
    }

    void serverDefaults() {
        const auto [ini, dataFile, logFolder] = thisRow<QByteArray, QString, QString>();
        TestProgram program;
        program.logIn();
        if (!ini.isEmpty()) writeFile(program.appFile("DefaultPaths.ini"), ini);
        for (int run = 0; run < 2; ++run) { // the procedure is replaced by the second run
            const ServerDefaults defaults =
                readServerDefaults(program.session.db(), program.session.paths.AppFolder());
            if (dataFile == "*") {
                QVERIFY(defaults.dataFolder.endsWith('\\') && defaults.logFolder.endsWith('\\'));
                continue;
            }
            QCOMPARE(defaults.dataFolder + '|' + defaults.dataExtension, dataFile);
            QCOMPARE(defaults.logFolder, logFolder);
            QCOMPARE(defaults.logExtension, QString(".lbf"));
        }
    }
};

static const AnnounceTest<SchedulerDatabaseTest> announced;
#include "SchedulerDatabaseTest.moc"
