#include "app/ScriptRunner.h"
#include "base/CommandLine.h"
#include "base/Csv.h"
#include "base/modOptions.h"
#include "db/Refusal.h"
#include "db/SchedulerDatabase.h"
#include "support/Files.h"
#include "support/Rows.h"
#include "support/TestClass.h"
#include "support/TestProgram.h"

#include <QBuffer>
#include <QStringEncoder>

/// The files beside the application: error log, folder settings, scripts.
class StartUpFilesTest : public QObject {
    Q_OBJECT

private slots:
    void errorLogRollsOverAboveAMillionBytes() {
        for (const int size : {1'000'000, 1'000'001}) {
            const bool rollsOver = size > 1'000'000;
            const QTemporaryDir folder;
            ErrorLog log;
            log.setFolder(folder.path() + "//");
            QCOMPARE(QFileInfo(log.path()).fileName(), QString("_ZelvanSchedulerError.log"));
            log.setUserName("anna");
            writeFile(log.path(), QByteArray(size, 'x'));
            writeFile(log.backupPath(), "an older log");
            log.write("frmX.cmdY_Click", 208, "Invalid \"name\", twice");
            QCOMPARE(QFileInfo(log.backupPath()).size(), rollsOver ? size : 12);
            const QByteArray last = rollsOver ? readFile(log.path()) : readFile(log.path()).mid(size);
            QVERIFY2(last.endsWith("\"frmX.cmdY_Click\",208,\"Invalid \"\"name\"\", twice\"\r\n"),
                     last.constData());
        }
    }

    void errorLogStaysBoundedAndHasAFileForEveryName() {
        const QTemporaryDir folder;
        ErrorLog log;
        log.setFolder(folder.path());
        QSet<QString> files;
        for (const QString& name : {QString(300, u'Ω'), QString(300, u'Ω') + 'x', QString("a\tb\n\x01")}) {
            log.setUserName(name);
            log.write("begun");
            QVERIFY2(readFile(log.path()).startsWith("\"begun\""), qPrintable(log.path()));
            files << log.path();
        }
        QCOMPARE(files.size(), 3);
        QVERIFY(QDir().mkpath(log.backupPath() + "/occupied"));
        writeFile(log.path(), QByteArray(1'000'001, 'x') + "\nlast\n");
        log.write("one more");
        QVERIFY(QFileInfo(log.path()).size() < 600'000);
        QVERIFY(readFile(log.path()).endsWith("last\n\"one more\"\r\n"));
    }

    void errorLogIsElsewhereWhereItCannotBeWritten() {
        const QTemporaryDir folder;
        writeFile(folder.filePath("app"), "no folder");
        ErrorLog log;
        log.setFolder(folder.filePath("app"));
        log.setUserName("anna");
        log.write("begun");
        QVERIFY(log.isElsewhere());
        QVERIFY2(readFile(log.path()).startsWith("\"begun\""), qPrintable(log.path()));
        QCOMPARE(QFileInfo(log.backupPath()).path(), QFileInfo(log.path()).path());
        log.setFolder(folder.path());
        log.write("begun");
        QVERIFY(!log.isElsewhere() && readFile(log.path()).startsWith("\"begun\""));
    }

    void errorLogMarksFatalErrors() {
        const QTemporaryDir folder;
        ErrorLog log;
        log.setFolder(folder.path());
        log.setUserName("../../etc/x"); // must not lead out of the folder
        log.write("plain line");
        for (const int number : {-1, 7, 61, 68, 9, 11, 17}) log.write("context", number, "text");
        QCOMPARE(QFileInfo(log.path()).path(), folder.path());
        const QList<QByteArray> lines = readFile(log.path()).split('\n');
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
        writeFile(paths.appFile("Paths.txt"), "nonsense\r\nBackupFolder\r\nProjectFolder=/Donn\xe9"
                                              "es/=x\r\n");
        QCOMPARE(cPathControl(folder.path()).ProjectFolder(), QString("/Données/=x"));
    }

    void commandLineFields_data() {
        const Rows<QString, QStringList> row;
        row("empty", "", {""});
        row("without the shell's quotes", "anna,pass word,host,1433", {"anna", "pass word", "host,1433"});
        row("four", "anna,pass,word,host", {"anna", "pass", "word", "host"});
        row("quoted comma", "anna,\"a,b\",\"host,1433\"", {"anna", "a,b", "host,1433"});
        row("quote in quotes", "anna,\"a\"\"b\",s", {"anna", "a\"b", "s"});
        row("drop", "-d", {"-d"});
        row("from the input", "-", {"zoë", "a,b", "host,1433"});
    }

    void commandLineFields() {
        const auto [line, fields] = thisRow<QString, QStringList>();
        std::string program = "program";
        std::string typed = line.toStdString();
        std::vector<char*> arguments{program.data(), typed.data()};
        QBuffer input;
        input.setData("zo\xc3\xab,\"a,b\",\"host,1433\"\r\nmore\n");
        QVERIFY(input.open(QIODevice::ReadOnly));
        QCOMPARE(csvFields(typedCommandLine(line.split(' '), input)), fields);
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
            writeFile(jobs, content);
            QCOMPARE(runJobs(db, program.session.paths.AppFolder()), QString());
            QVERIFY(!QFile::exists(jobs));
            QCOMPARE(db.scalar(sql("SELECT MAX(letters) FROM jobs WHERE x = 2")), QString("é€"));
            if (content != script.toUtf8()) db.execute(sql("DROP TABLE jobs"));
        }

        writeFile(jobs,
                  "INSERT INTO jobs (x) VALUES (4)\nGO\nINSERT INTO nowhere VALUES (1)\nGO\nINSERT INTO "
                  "jobs (x) VALUES (8)\n");
        const QString failure = runJobs(db, program.session.paths.AppFolder());
        QVERIFY(failure.contains("batch 2") && failure.contains("INSERT INTO nowhere"));
        QVERIFY(!QFile::exists(jobs));
        QCOMPARE(
            readFile(jobs + ".failed"),
            QByteArray("INSERT INTO nowhere VALUES (1)\r\nGO\r\nINSERT INTO jobs (x) VALUES (8)\r\nGO\r\n"));
        QCOMPARE(db.scalar(sql("SELECT SUM(x) FROM jobs")), QString("7"));
        QVERIFY_EXCEPTION_THROWN(runScript(db, program.appFile("none.sql")), Refusal);
    }

    void whatAScriptLeavesInTheSessionMeetsNobody() {
        TestProgram program;
        program.logIn();
        Connection& db = program.session.db();
        db.execute(sql("UPDATE tblTemplate_Report SET UserId = 'W7'"));
        writeFile(program.appFile("jobs.sql"), "USE NorvaTallymere\nSET NOCOUNT ON\nBEGIN TRANSACTION\n");
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
};

static const AnnounceTest<StartUpFilesTest> announced;
#include "StartUpFilesTest.moc"
