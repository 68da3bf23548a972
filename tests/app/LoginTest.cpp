#include "app/frmCreateDB.h"
#include "app/frmLogin.h"
#include "base/SettingsStore.h"
#include "demo/DemoUser.h"
#include "support/Controls.h"
#include "support/Files.h"
#include "support/Modal.h"
#include "support/Rows.h"
#include "support/TestClass.h"
#include "support/TestProgram.h"

#include <QLineEdit>
#include <QRegularExpression>
#include <QScopeGuard>

/// The login screen on the embedded server, pressed like a user does.
class LoginTest : public QObject {
    Q_OBJECT

    struct Login {
        TestProgram program;
        frmLogin screen{program.context};

        explicit Login(bool schedulerDatabase = true) : program(schedulerDatabase) { screen.show(); }
        /// Fills the screen and presses OK; the messages are left in the program.
        bool logIn(const QString& user, const QString& password, const QString& server) {
            child<QLineEdit>(screen, "TxtUsername").setText(user);
            child<QLineEdit>(screen, "TxtPassword").setText(password);
            child<QLineEdit>(screen, "txtServer").setText(server);
            press(screen, "cmdOk");
            return !program.session.serverName.isEmpty();
        }
        bool logIn() { return logIn("QuorraAdmin", DemoServer::loginPassword, program.server()); }
        QStringList shown() { return program.messages.takeShown(); }
        QString databases() { // of the scheduler's name
            return program.system().scalar(
                sql("SELECT COUNT(*) FROM master.dbo.sysdatabases WHERE name = 'NorvaScheduler'"));
        }
    };

private slots:
    void whatIsTypedIsChecked_data() {
        const Rows<QString, QString, QString, QString, QString> row;
        const QString invalid = "Invalid Login.  Please check details entered and try again.";
        row("no user", "", "p", "s", "You must enter a username.", "TxtUsername");
        row("blank in user", "a b", "p", "s",
            "The Username is invalid.  Usernames cannot contain spaces.  Please try another.", "TxtUsername");
        row("no password", "a", "", "s", "You must enter a password.", "TxtPassword");
        row("no server", "a", "p", "", "You must enter a Server name.", "txtServer");
        row("short administrator password", "QuorraAdmin", "nine-long", "*",
            "The QuorraAdmin password must be greater than 10 characters long.  Please contact your "
            "Administrator.",
            "TxtPassword");
        row("wrong administrator password", "QuorraAdmin", "ten-chars!", "*", invalid, "");
        row("unknown user", "nobody", "p", "*", invalid, "TxtPassword");
        row("administrator in lower case is an ordinary user", "quorraadmin",
            QString(DemoServer::loginPassword), "*", invalid, "TxtPassword");
        row("injection in the user", "x'--", "p", "*", invalid, "TxtPassword");
        row("injection in the password", "nobody", "' OR '1'='1", "*", invalid, "TxtPassword");
    }

    void whatIsTypedIsChecked() {
        const auto [user, password, server, message, focus] =
            thisRow<QString, QString, QString, QString, QString>();
        Login login;
        QVERIFY(!login.logIn(user, password, server == "*" ? login.program.server() : server));
        QCOMPARE(login.shown(), QStringList(message));
        QVERIFY(login.screen.isVisible());
        if (!focus.isEmpty()) QCOMPARE(login.screen.focusWidget()->objectName(), focus);
    }

    void everyLevelIsTreatedAsItShould() {
        for (const DemoUser& user : DemoUser::all()) {
            Login login;
            const bool in = login.logIn(user.name, DemoUser::password, login.program.server());
            QCOMPARE(in, user.level != 5);
            QCOMPARE(login.screen.endProgram(), user.level == 5);
            if (user.level == 5)
                QCOMPARE(login.shown(),
                         QStringList("Level 5 users are not premitted to run this application."));
            if (!in) continue;
            const Session& session = login.program.session;
            QCOMPARE(int(session.userLevel), user.level);
            QCOMPARE(session.costCentres.join(""), user.level == 4 ? user.costCentres.join("") : QString());
            QCOMPARE(getSetting("NorvaQuorraSQL", "Settings", "Server", "99"), login.program.server());
        }
        Login administrator; // whose password matches in any case
        QVERIFY(administrator.logIn("QuorraAdmin", QString(DemoServer::loginPassword).toUpper(),
                                    administrator.program.server()));
        QVERIFY(administrator.program.session.userLevel == UserLevel::Administrator);
    }

    void recordedStatementsHoldNoPassword() {
        const QTemporaryDir folder;
        QFile record(folder.filePath("statements"));
        qputenv("ZELVAN_SCHEDULER_STATEMENTS", record.fileName().toLocal8Bit());
        const auto unset = qScopeGuard([] { qunsetenv("ZELVAN_SCHEDULER_STATEMENTS"); });
        for (const QString& user : {QString("QuorraAdmin"), DemoUser::all().first().name}) {
            Login login;
            QString password = TestProgram::passwordOf(user);
            if (user == "QuorraAdmin") password = password.toUpper(); // case does not matter for this one
            QVERIFY(login.logIn(user, password, login.program.server()));
            Connection& db = login.program.session.db();
            const Transaction undone(db);
            QVERIFY_EXCEPTION_THROWN(
                db.execute(sql("SELECT 1\r\nFROM nowhere WHERE a = {}", Secret{password})), DbError);
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

    void aServerThatIsNotThereIsToldApart() {
        Login login;
        writeFile(login.program.appFile("SchDB.sql"), "not a server");
        for (const QString& file :
             {QString("/nowhere/server.db"), QString("/"), login.program.appFile("SchDB.sql")}) {
            QVERIFY(!login.logIn("QuorraAdmin", DemoServer::loginPassword, "file:" + file));
            const QString shown = login.shown().join('|');
            QVERIFY2(shown.contains("file:" + file) && shown.count("cannot be reached") == 1,
                     qPrintable(shown));
            QVERIFY(!login.screen.endProgram());
        }
    }

    void securityFile() {
        for (const QByteArray& content : {QByteArray(), QByteArray(100, 'x')}) {
            Login login;
            const QString file = login.program.appFile("Zelvan.SSS");
            QVERIFY(QFile::remove(file));
            if (!content.isNull()) writeFile(file, content);
            QVERIFY(!login.logIn());
            QCOMPARE(login.shown(),
                     QStringList("The Security file is invalid.  Please contact your Administrator."));
            QFile missing(file);
            const bool opens = missing.open(QIODevice::ReadOnly);
            const QString reason = opens ? "damaged" : missing.errorString();
            QVERIFY(login.program.messages.lastDetails().contains(QDir::toNativeSeparators(file) + ": ")
                    && login.program.messages.lastDetails().contains(reason));
        }
    }

    void rolesAndSettingsEndTheProgram_data() {
        const Rows<QString, QString> row;
        const QString role =
            "The QuorraAdmin login is not a member of the %1 role.  Please contact your Administrator.";
        row("dbcreator", "ALTER SERVER ROLE dbcreator DROP MEMBER QuorraAdmin", role.arg("Database Creator"));
        row("bulkadmin", "ALTER SERVER ROLE bulkadmin DROP MEMBER QuorraAdmin",
            role.arg("Bulk Insert Administrators"));
        row("settings", "DELETE FROM NorvaTallymere.dbo.TblSQLSettings",
            "No SQL settings have been setup on the server. Please contact your administrator.  "
            "The program can not continue.");
    }

    void rolesAndSettingsEndTheProgram() {
        const auto [damage, message] = thisRow<QString, QString>();
        Login login;
        if (damage.contains("ROLE") && !login.program.ownsLogin())
            QSKIP("the server's own login is left alone");
        login.program.system().execute(Sql::script(damage));
        QVERIFY(!login.logIn());
        QCOMPARE(login.shown(), QStringList(message));
        QVERIFY(login.screen.endProgram());
    }

    void theFirstLoginCreatesTheDatabaseOrLeavesNothing_data() {
        const Rows<QByteArray, QString> row;
        const QString failed = "Failed to create the database.\r\nCan not continue.";
        row("created", "as it is", "Succsessfuly created the database.");
        row("missing script", QByteArray(), failed);
        row("third batch fails",
            "CREATE TABLE a (x int)\nGO\nCREATE TABLE b (x int)\ngo\nCREATE TABLE a (y int)\n", failed);
    }

    void theFirstLoginCreatesTheDatabaseOrLeavesNothing() {
        const auto [tables, message] = thisRow<QByteArray, QString>();
        const bool created = message.startsWith("Succ");
        Login login(false);
        const QString script = login.program.appFile("SchDB.sql");
        if (!created) QVERIFY(QFile::remove(script));
        if (!created && !tables.isNull()) writeFile(script, tables);
        inNextModal<frmCreateDB>([](frmCreateDB& create) { press(create, "cmdCreate"); });
        QCOMPARE(login.logIn(), created);
        QCOMPARE(login.shown(), QStringList(message));
        QCOMPARE(login.screen.endProgram(), !created);
        QCOMPARE(login.databases(), created ? "1" : "0");
        if (created)
            login.program.session.db().execute(sql("SELECT * FROM NorvaScheduler.dbo.tblSchedule"));
        else
            QVERIFY2(login.program.messages.lastDetails().contains("SchDB.sql"),
                     qPrintable(login.program.messages.lastDetails()));
    }

    void dropOnRequest() {
        Login login;
        login.program.session.dropDatabase = true;
        for (const bool agreed : {false, true}) {
            login.screen.show();
            login.program.messages.answer(agreed);
            login.logIn();
            QCOMPARE(login.screen.endProgram(), agreed);
            QCOMPARE(login.databases(), agreed ? "0" : "1");
        }
        QVERIFY(login.shown().last().startsWith("The NorvaScheduler database was deleted"));
    }

    void aServerThatStumblesLeavesTheScreenOpen() {
        // Whatever statement of the login fails, the user is told and may try again.
        Login login;
        Session& session = login.program.session;
        int failures = 0;
        for (int k = 1; k < 100; ++k) {
            login.screen.show();
            login.program.fault.arm(k);
            if (login.logIn() && login.program.fault.taken < k) break;
            const QStringList shown = login.shown();
            if (!session.serverName.isEmpty()) { // a failure that has another way, like the registry's
                session.serverName.clear();
                continue;
            }
            ++failures;
            QVERIFY2(shown.size() == 1 && shown[0].contains("Made to fail."), qPrintable(shown.join('|')));
            QVERIFY(login.screen.isVisible() && !login.screen.endProgram());
        }
        QVERIFY2(failures > 5, qPrintable(QString::number(failures)));
    }
};

static const AnnounceTest<LoginTest> announced;
#include "LoginTest.moc"
