#include "app/ScriptRunner.h"
#include "base/CommandLine.h"
#include "base/modOptions.h"
#include "db/DbError.h"
#include "db/SchedulerDatabase.h"
#include "support/TestClass.h"
#include "support/TestProgram.h"

#include <QBuffer>
#include <QStringEncoder>
#include <QTest>

/// The files beside the application: error log, folder settings, scripts.
class StartUpFilesTest : public QObject {
    Q_OBJECT

    static void write(const QString& path, const QByteArray& content) {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
    }
    static QByteArray read(const QString& path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

private slots:
    void errorLogRollsOverAboveAMillionBytes_data() {
        QTest::addColumn<int>("size");
        QTest::addColumn<bool>("rollsOver");
        QTest::newRow("a million") << 1'000'000 << false;
        QTest::newRow("one more") << 1'000'001 << true;
    }

    void errorLogRollsOverAboveAMillionBytes() {
        QFETCH(int, size);
        QFETCH(bool, rollsOver);
        const QTemporaryDir folder;
        ErrorLog log;
        log.setFolder(folder.path() + "//");
        QCOMPARE(QFileInfo(log.path()).fileName(), QString("_ZelvanSchedulerError.log"));
        log.setUserName("anna");
        write(log.path(), QByteArray(size, 'x'));
        write(log.backupPath(), "an older log");
        log.write("frmX.cmdY_Click", 208, "Invalid \"name\", twice");
        QCOMPARE(QFileInfo(log.backupPath()).size(), rollsOver ? size : 12);
        const QByteArray last = rollsOver ? read(log.path()) : read(log.path()).mid(size);
        QVERIFY2(last.endsWith("\"frmX.cmdY_Click\",208,\"Invalid \"\"name\"\", twice\"\r\n"),
                 last.constData());
    }

    void errorLogMarksFatalErrors() {
        const QTemporaryDir folder;
        ErrorLog log;
        log.setFolder(folder.path());
        log.setUserName("../../etc/x"); // must not lead out of the folder
        log.write("plain line");
        for (const int number : {-1, 7, 61, 68, 9, 11, 17}) log.write("context", number, "text");
        QCOMPARE(QFileInfo(log.path()).path(), folder.path());
        const QList<QByteArray> lines = read(log.path()).split('\n');
        QCOMPARE(lines[0], QByteArray("\"plain line\"\r"));
        for (int i = 1; i <= 7; ++i) QCOMPARE(lines[i].startsWith("\"****** FATAL ERROR \","), i <= 4);
    }

    void foldersAreKept() {
        const QTemporaryDir folder;
        cPathControl paths(folder.path() + '/');
        QCOMPARE(paths.ProjectFolder(), folder.path() + "/Projects");
        QCOMPARE(paths.BackupFolder(), folder.path() + "/Projects/Backup");
        QVERIFY(paths.CanWriteToNorvaQXAppPath());
        QVERIFY(!QFile::exists(paths.appFile("Test.dat")));
        paths.setSystemFolder(folder.path() + "/System/");
        QVERIFY(paths.SavePathSettingsFile());
        QCOMPARE(cPathControl(folder.path()).SystemFolder(), folder.path() + "/System");
        write(paths.appFile("Paths.txt"), "nonsense\r\nBackupFolder\r\nProjectFolder=/Donn\xe9"
                                          "es/=x\r\n");
        QCOMPARE(cPathControl(folder.path()).ProjectFolder(), QString("/Données/=x"));
    }

    void workingFilesAreCopied() {
        const QTemporaryDir from;
        const QTemporaryDir to;
        QVERIFY(QDir(from.path()).mkpath("Log/2026") && QDir(from.path()).mkpath("Other"));
        for (const char* file : {"a.txt", "b.MDB", "c.exe", "Log/2026/d.xyz", "Other/e.txt"})
            write(from.filePath(file), file);
        write(to.filePath("a.txt"), "older");
        QCOMPARE(cPathControl(from.path()).CopyFilesAndFolders(from.path(), to.path()), 0);
        QCOMPARE(read(to.filePath("a.txt")), QByteArray("a.txt"));
        QVERIFY(QFile::exists(to.filePath("b.MDB")) && QFile::exists(to.filePath("Log/2026/d.xyz")));
        QVERIFY(!QFile::exists(to.filePath("c.exe")) && !QFile::exists(to.filePath("Other/e.txt")));
    }

    void commandLineFields_data() {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QStringList>("fields");
        QTest::newRow("empty") << "" << QStringList{""};
        QTest::newRow("without the shell's quotes")
            << "anna,pass word,host,1433" << QStringList{"anna", "pass word", "host,1433"};
        QTest::newRow("four") << "anna,pass,word,host" << QStringList{"anna", "pass", "word", "host"};
        QTest::newRow("quoted comma")
            << "anna,\"a,b\",\"host,1433\"" << QStringList{"anna", "a,b", "host,1433"};
        QTest::newRow("quote in quotes") << "anna,\"a\"\"b\",s" << QStringList{"anna", "a\"b", "s"};
        QTest::newRow("drop") << "-d" << QStringList{"-d"};
        QTest::newRow("from the input") << "-" << QStringList{"zoë", "a,b", "host,1433"};
    }

    void commandLineFields() {
        QFETCH(QString, line);
        QFETCH(QStringList, fields);
        std::string program = "program";
        std::string typed = line.toStdString();
        std::vector<char*> arguments{program.data(), typed.data()};
        QBuffer input;
        input.setData("zo\xc3\xab,\"a,b\",\"host,1433\"\r\nmore\n");
        QVERIFY(input.open(QIODevice::ReadOnly));
        QCOMPARE(splitCommandLine(typedCommandLine(line.split(' '), input)), fields);
        hideArguments(int(arguments.size()), arguments.data());
        QVERIFY(typed.find_first_not_of('\0') == std::string::npos && program == "program");
    }

    void scriptsRunInBatches() {
        TestProgram program;
        program.logIn();
        Connection& db = program.session.db();
        const QString jobs = program.appFile("jobs.sql");
        QCOMPARE(runJobs(db, program.session.paths.AppFolder()), QString()); // nothing there, nothing done
        const QString script = "CREATE TABLE jobs (x int, letters nvarchar(9))\r\ngo\r\nINSERT INTO jobs "
                               "(x)\r\nVALUES (1)\r\nGo\r\n\r\nGO\r\n"
                               "INSERT INTO jobs VALUES (2, N'é€')";
        QStringEncoder utf16(QStringConverter::Utf16LE, QStringConverter::Flag::WriteBom);
        const QByteArray windows = script.chopped(4).toLatin1() + "\xe9\x80')";
        for (const QByteArray& content : {QByteArray(utf16(script)), windows, script.toUtf8()}) {
            write(jobs, content);
            QCOMPARE(runJobs(db, program.session.paths.AppFolder()), QString());
            QVERIFY(!QFile::exists(jobs));
            QCOMPARE(db.scalar(sql("SELECT MAX(letters) FROM jobs WHERE x = 2")), QString("é€"));
            if (content != script.toUtf8()) db.execute(sql("DROP TABLE jobs"));
        }

        write(jobs, "INSERT INTO jobs (x) VALUES (4)\nGO\nINSERT INTO nowhere VALUES (1)\nGO\nINSERT INTO "
                    "jobs (x) VALUES (8)\n");
        const QString failure = runJobs(db, program.session.paths.AppFolder());
        QVERIFY(failure.contains("batch 2") && failure.contains("INSERT INTO nowhere"));
        QVERIFY(!QFile::exists(jobs));
        QCOMPARE(
            read(jobs + ".failed"),
            QByteArray("INSERT INTO nowhere VALUES (1)\r\nGO\r\nINSERT INTO jobs (x) VALUES (8)\r\nGO\r\n"));
        QCOMPARE(db.scalar(sql("SELECT SUM(x) FROM jobs")), QString("7"));
        QVERIFY_EXCEPTION_THROWN(runScript(db, program.appFile("none.sql")), DbError);
    }

    void whatAScriptLeavesInTheSessionMeetsNobody() {
        TestProgram program;
        program.logIn();
        Connection& db = program.session.db();
        db.execute(sql("UPDATE tblTemplate_Report SET UserId = 'W7'"));
        write(program.appFile("jobs.sql"), "USE NorvaTallymere\nSET NOCOUNT ON\nBEGIN TRANSACTION\n");
        QCOMPARE(runJobs(db, program.session.paths.AppFolder()), QString());
        upgradeAtMainScreen(db);
        for (const char* path : {"D:\\Out", "E:\\Out"})
            SaveGlobalOptions(program.session, {path, true, false});
        program.session.connection->close();
        QCOMPARE(program.other().scalar(sql("SELECT COUNT(*) FROM tblTemplate_Report WHERE UserId <> 'W7'")),
                 QString("0"));
        QCOMPARE(program.other().scalar(sql("SELECT COUNT(*) FROM tblOptions WHERE OutputPath = N'E:\\Out'")),
                 QString("1"));
        QCOMPARE(program.other().scalar(sql("SELECT COUNT(*) FROM tblOptions")), QString("1"));
    }

    void optionsAreReadAndLogged_data() {
        QTest::addColumn<QString>("change");
        QTest::addColumn<QByteArray>("outputs");
        const QString set = "UPDATE NorvaScheduler.dbo.tblOptions SET OutputPath = N'D:\\Out', ";
        QTest::newRow("both") << set + "Excel = 1, CSV = 1" << QByteArray("Excel, CSV");
        QTest::newRow("one") << set + "Excel = 0, CSV = 1" << QByteArray("CSV");
        QTest::newRow("none") << set + "Excel = 0, CSV = 0" << QByteArray("None");
        QTest::newRow("no row") << "DELETE FROM NorvaScheduler.dbo.tblOptions" << QByteArray("None");
    }

    void optionsAreReadAndLogged() {
        QFETCH(QString, change);
        QFETCH(QByteArray, outputs);
        TestProgram program;
        program.logIn();
        program.other().execute(Sql::script(change));
        ReadGlobalOptions(program.session);
        const QByteArray path = change.startsWith("UPDATE") ? "D:\\Out" : "";
        QVERIFY2(read(program.session.log.path())
                     .endsWith("\"Reading Global Options\"\r\n\"Output Path        : " + path
                               + "\"\r\n\"Default Output     : " + outputs + "\"\r\n"),
                 read(program.session.log.path()).constData());
    }
};

static const AnnounceTest<StartUpFilesTest> announced;
#include "StartUpFilesTest.moc"
