#include "app/frmCreateDB.h"
#include "app/frmLogin.h"
#include "base/SettingsStore.h"
#include "demo/DemoUser.h"
#include "support/Modal.h"
#include "support/TestClass.h"
#include "support/TestProgram.h"

#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QScopeGuard>

/// The login screen on the embedded server, pressed like a user does.
class LoginTest : public QObject {
    Q_OBJECT

    /// Fills the screen and presses OK; the messages are left in the program.
    static bool logIn(TestProgram& program, frmLogin& screen, const QString& user, const QString& password,
                      const QString& server) {
        screen.findChild<QLineEdit*>("TxtUsername")->setText(user);
        screen.findChild<QLineEdit*>("TxtPassword")->setText(password);
        screen.findChild<QLineEdit*>("txtServer")->setText(server);
        screen.findChild<QPushButton*>("cmdOk")->click();
        return !program.session.serverName.isEmpty();
    }

private slots:
    void whatIsTypedIsChecked_data() {
        QTest::addColumn<QString>("user");
        QTest::addColumn<QString>("password");
        QTest::addColumn<QString>("server");
        QTest::addColumn<QString>("message");
        QTest::addColumn<QString>("focus");
        const QString invalid = "Invalid Login.  Please check details entered and try again.";
        QTest::newRow("no user") << ""
                                 << "p"
                                 << "s"
                                 << "You must enter a username."
                                 << "TxtUsername";
        QTest::newRow("blank in user")
            << "a b"
            << "p"
            << "s"
            << "The Username is invalid.  Usernames cannot contain spaces.  Please try another."
            << "TxtUsername";
        QTest::newRow("no password") << "a"
                                     << ""
                                     << "s"
                                     << "You must enter a password."
                                     << "TxtPassword";
        QTest::newRow("no server") << "a"
                                   << "p"
                                   << ""
                                   << "You must enter a Server name."
                                   << "txtServer";
        QTest::newRow("short administrator password")
            << "QuorraAdmin"
            << "nine-long"
            << "*"
            << "The QuorraAdmin password must be greater than 10 characters long.  Please contact your "
               "Administrator."
            << "TxtPassword";
        QTest::newRow("wrong administrator password") << "QuorraAdmin"
                                                      << "ten-chars!"
                                                      << "*" << invalid << "";
        QTest::newRow("unknown user") << "nobody"
                                      << "p"
                                      << "*" << invalid << "TxtPassword";
        QTest::newRow("administrator in lower case is an ordinary user")
            << "quorraadmin" << QString(DemoServer::loginPassword) << "*" << invalid << "TxtPassword";
        QTest::newRow("injection in the user") << "x'--"
                                               << "p"
                                               << "*" << invalid << "TxtPassword";
        QTest::newRow("injection in the password") << "nobody"
                                                   << "' OR '1'='1"
                                                   << "*" << invalid << "TxtPassword";
    }

    void whatIsTypedIsChecked() {
        QFETCH(QString, user);
        QFETCH(QString, password);
        QFETCH(QString, server);
        QFETCH(QString, message);
        QFETCH(QString, focus);
        TestProgram program;
        frmLogin screen(program.context);
        screen.show();
        QVERIFY(!logIn(program, screen, user, password, server == "*" ? program.server() : server));
        QCOMPARE(program.messages.takeShown(), QStringList(message));
        QVERIFY(screen.isVisible());
        if (!focus.isEmpty()) QCOMPARE(screen.focusWidget()->objectName(), focus);
    }

    void everyLevelIsTreatedAsItShould() {
        for (const DemoUser& user : DemoUser::all()) {
            TestProgram program;
            frmLogin screen(program.context);
            const bool in = logIn(program, screen, user.name, DemoUser::password, program.server());
            QCOMPARE(in, user.level != 5);
            QCOMPARE(screen.endProgram(), user.level == 5);
            if (user.level == 5)
                QCOMPARE(program.messages.takeShown(),
                         QStringList("Level 5 users are not premitted to run this application."));
            if (!in) continue;
            QCOMPARE(program.session.userLevel, user.level);
            QCOMPARE(program.session.costCentres.join(""),
                     user.level == 4 ? user.costCentres.join("") : QString());
            QCOMPARE(getSetting("NorvaQuorraSQL", "Settings", "Server", "99"), program.server());
            QCOMPARE(program.session.db().defaultDatabase(), QString("NorvaScheduler"));
        }
    }

    void recordedStatementsHoldNoPassword() {
        const QTemporaryDir folder;
        QFile record(folder.filePath("statements"));
        qputenv("ZELVAN_SCHEDULER_STATEMENTS", record.fileName().toLocal8Bit());
        const auto unset = qScopeGuard([] { qunsetenv("ZELVAN_SCHEDULER_STATEMENTS"); });
        for (const QString& user : {QString("QuorraAdmin"), DemoUser::all().first().name}) {
            TestProgram program;
            frmLogin screen(program.context);
            QString password = TestProgram::passwordOf(user);
            if (user == "QuorraAdmin") password = password.toUpper(); // case does not matter for this one
            QVERIFY(logIn(program, screen, user, password, program.server()));
            const Transaction undone(program.session.db());
            QVERIFY_EXCEPTION_THROWN(
                program.session.db().execute(sql("SELECT 1\r\nFROM nowhere WHERE a = {}", Secret{password})),
                DbError);
        }
        QVERIFY(record.open(QIODevice::ReadOnly));
        const QString text = record.readAll();
        for (const QString& secret : {QString(DemoUser::password), QString(DemoServer::loginPassword)})
            QVERIFY(!text.contains(secret, Qt::CaseInsensitive));
        QVERIFY(text.contains(QRegularExpression(
            "\\n[0-9:.]{12} +[0-9]+ ms \\[[0-9]+\\] SELECT \\* FROM \\[TblUsers\\][^\n]*N'\\*\\*\\*'\\n")));
        QVERIFY(text.contains(QRegularExpression("\\(begin\\)\\n.*SELECT 1\\n    FROM nowhere.*\\n    "
                                                 "failed: 208 \\*\\*\\*\\n.*\\(rollback\\)\\n")));
    }

    void aServerThatIsNotThereIsToldApart_data() {
        QTest::addColumn<QString>("server");
        QTest::newRow("no such file") << "file:/nowhere/server.db";
        QTest::newRow("no server file") << "file:README";
        QTest::newRow("a folder") << "file:/";
    }

    void aServerThatIsNotThereIsToldApart() {
        QFETCH(QString, server);
        TestProgram program;
        if (server == "file:README") {
            QFile file(program.appFile("README"));
            QVERIFY(file.open(QIODevice::WriteOnly) && file.write("not a server") > 0);
            server = "file:" + file.fileName();
        }
        frmLogin screen(program.context);
        QVERIFY(!logIn(program, screen, "QuorraAdmin", DemoServer::loginPassword, server));
        const QStringList shown = program.messages.takeShown();
        QCOMPARE(shown.size(), 1);
        QVERIFY2(shown[0].contains(server) && shown[0].contains("cannot be reached"), qPrintable(shown[0]));
        QVERIFY(!screen.endProgram());
    }

    void securityFile_data() {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("missing") << QByteArray();
        QTest::newRow("damaged") << QByteArray(100, 'x');
    }

    void securityFile() {
        QFETCH(QByteArray, content);
        TestProgram program;
        QFile file(program.appFile("Zelvan.SSS"));
        QVERIFY(file.remove());
        if (!content.isEmpty()) QVERIFY(file.open(QIODevice::WriteOnly) && file.write(content) > 0);
        file.close();
        frmLogin screen(program.context);
        QVERIFY(!logIn(program, screen, "QuorraAdmin", DemoServer::loginPassword, program.server()));
        QCOMPARE(program.messages.takeShown(),
                 QStringList("The Security file is invalid.  Please contact your Administrator."));
    }

    void rolesAndSettingsEndTheProgram_data() {
        QTest::addColumn<QString>("damage");
        QTest::addColumn<QString>("message");
        const QString role =
            "The QuorraAdmin login is not a member of the %1 role.  Please contact your Administrator.";
        QTest::newRow("dbcreator") << "ALTER SERVER ROLE dbcreator DROP MEMBER QuorraAdmin"
                                   << role.arg("Database Creator");
        QTest::newRow("bulkadmin") << "ALTER SERVER ROLE bulkadmin DROP MEMBER QuorraAdmin"
                                   << role.arg("Bulk Insert Administrators");
        QTest::newRow("settings")
            << "DELETE FROM NorvaTallymere.dbo.TblSQLSettings"
            << "No SQL settings have been setup on the server. Please contact your administrator.  "
               "The program can not continue.";
    }

    void rolesAndSettingsEndTheProgram() {
        QFETCH(QString, damage);
        QFETCH(QString, message);
        TestProgram program;
        if (damage.contains("ROLE") && !program.ownsLogin()) QSKIP("the server's own login is left alone");
        program.system().execute(Sql::script(damage));
        frmLogin screen(program.context);
        QVERIFY(!logIn(program, screen, "QuorraAdmin", DemoServer::loginPassword, program.server()));
        QCOMPARE(program.messages.takeShown(), QStringList(message));
        QVERIFY(screen.endProgram());
    }

    void firstLoginCreatesTheDatabase() {
        TestProgram program(false);
        frmLogin screen(program.context);
        inNextModal<frmCreateDB>(
            [](frmCreateDB& create) { create.findChild<QPushButton*>("cmdCreate")->click(); });
        QVERIFY(logIn(program, screen, "QuorraAdmin", DemoServer::loginPassword, program.server()));
        QCOMPARE(program.messages.takeShown(), QStringList("Succsessfuly created the database."));
        QCOMPARE(program.session.db().scalar(sql("SELECT COUNT(*) FROM NorvaScheduler.dbo.tblSchedule")),
                 QString("0"));
    }

    void failedCreationLeavesNothingBehind_data() {
        QTest::addColumn<QString>("tables");
        QTest::newRow("missing script") << QString();
        QTest::newRow("third batch fails")
            << "CREATE TABLE a (x int)\nGO\nCREATE TABLE b (x int)\ngo\nCREATE TABLE a (y int)\n";
    }

    void failedCreationLeavesNothingBehind() {
        QFETCH(QString, tables);
        TestProgram program(false);
        QFile script(program.appFile("SchDB.sql"));
        QVERIFY(script.remove());
        if (!tables.isNull()) QVERIFY(script.open(QIODevice::WriteOnly) && script.write(tables.toUtf8()) > 0);
        script.close();
        frmLogin screen(program.context);
        inNextModal<frmCreateDB>(
            [](frmCreateDB& create) { create.findChild<QPushButton*>("cmdCreate")->click(); });
        QVERIFY(!logIn(program, screen, "QuorraAdmin", DemoServer::loginPassword, program.server()));
        QCOMPARE(program.messages.takeShown(),
                 QStringList("Failed to create the database.\r\nCan not continue."));
        QVERIFY2(program.messages.lastDetails().contains("SchDB.sql"),
                 qPrintable(program.messages.lastDetails()));
        QVERIFY(screen.endProgram());
        QCOMPARE(program.system().scalar(
                     sql("SELECT COUNT(*) FROM master.dbo.sysdatabases WHERE name = 'NorvaScheduler'")),
                 QString("0"));
    }

    void dropOnRequest() {
        TestProgram program;
        program.session.dropDatabase = true;
        frmLogin refused(program.context);
        program.messages.answer(false);
        QVERIFY(logIn(program, refused, "QuorraAdmin", DemoServer::loginPassword, program.server()));
        QVERIFY(!refused.endProgram());
        program.messages.takeShown();

        frmLogin agreed(program.context);
        program.messages.answer(true);
        logIn(program, agreed, "QuorraAdmin", DemoServer::loginPassword, program.server());
        QVERIFY(agreed.endProgram());
        QVERIFY(program.messages.takeShown().last().startsWith("The NorvaScheduler database was deleted"));
        QCOMPARE(program.system().scalar(
                     sql("SELECT COUNT(*) FROM master.dbo.sysdatabases WHERE name = 'NorvaScheduler'")),
                 QString("0"));
    }

    void aServerThatStumblesLeavesTheScreenOpen() {
        // Whatever statement of the login fails, the user is told and may try again.
        TestProgram program;
        frmLogin screen(program.context);
        int failures = 0;
        for (int k = 1; k < 100; ++k) {
            screen.show();
            program.fault.arm(k);
            if (logIn(program, screen, "QuorraAdmin", DemoServer::loginPassword, program.server())
                && program.fault.taken < k)
                break;
            const QStringList shown = program.messages.takeShown();
            if (!program.session.serverName
                     .isEmpty()) { // a failure that has another way, like the registry's
                program.session.serverName.clear();
                continue;
            }
            ++failures;
            QVERIFY2(shown.size() == 1 && shown[0].contains("Made to fail."), qPrintable(shown.join('|')));
            QVERIFY(screen.isVisible() && !screen.endProgram());
        }
        QVERIFY2(failures > 10, qPrintable(QString::number(failures)));
    }
};

static const AnnounceTest<LoginTest> announced;
#include "LoginTest.moc"
