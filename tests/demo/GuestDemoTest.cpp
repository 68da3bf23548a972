#include "app/cLogin.h"
#include "app/openServer.h"
#include "db/DbError.h"
#include "support/Rows.h"
#include "support/TestClass.h"
#include "support/TestProgram.h"

/// The demo on a server that is there already, whose place an embedded one takes.
class GuestDemoTest : public QObject {
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<Connection> m_host;

    int count(const char* view, const QString& name) {
        return m_host->scalar(sql("SELECT COUNT(*) FROM master.dbo.{} WHERE name = {}", Name(view), name))
            .toInt();
    }
    int databases() { return m_host->scalar(sql("SELECT COUNT(*) FROM master.dbo.sysdatabases")).toInt(); }

private slots:
    void init() {
        if (!TestProgram::onEmbeddedServer()) QSKIP("another server is invited to already");
        m_host.reset();
        m_folder = std::make_unique<QTemporaryDir>();
        const QString path = m_folder->filePath("host.db");
        DemoServer::buildEmpty(path);
        m_host = std::make_unique<Connection>(
            ConnectionString{"sa", DemoServer::systemPassword, "master", "file:" + path}, openServer);
        qputenv("SCHEDULER_TEST_SERVER", "file:" + path.toUtf8());
        qputenv("SCHEDULER_TEST_USER", "sa");
        qputenv("SCHEDULER_TEST_PASSWORD", DemoServer::systemPassword);
    }
    void cleanup() { qunsetenv("SCHEDULER_TEST_SERVER"); }

    void aGuestLeavesNothing() {
        const int before = databases();
        for (int visit = 0; visit < 2; ++visit) {
            TestProgram program;
            program.logIn();
            program.addDatabase("Another");
            QVERIFY(program.ownsLogin() && databases() > before);
        }
        QCOMPARE(databases(), before);
        QCOMPARE(count("syslogins", "QuorraAdmin"), 0);
    }

    void aVisitThatBrokeOffIsCleared() {
        // What it left: the login and its notes, of which only some had come true.
        m_host->execute(sql("CREATE DATABASE SchedulerTests"));
        m_host->execute(sql("CREATE TABLE SchedulerTests.dbo.Made (Kind varchar(10), [Name] nvarchar(128))"));
        m_host->execute(sql("INSERT INTO SchedulerTests.dbo.Made VALUES ('database', 'Brightwater')"));
        m_host->execute(sql("INSERT INTO SchedulerTests.dbo.Made VALUES ('database', 'NorvaScheduler')"));
        m_host->execute(sql("INSERT INTO SchedulerTests.dbo.Made VALUES ('login', 'QuorraAdmin')"));
        m_host->execute(sql("CREATE DATABASE Brightwater"));
        m_host->execute(sql("CREATE LOGIN QuorraAdmin WITH PASSWORD = 'of the broken visit'"));
        TestProgram().logIn();
        QCOMPARE(count("syslogins", "QuorraAdmin") + count("sysdatabases", "Brightwater"), 0);
    }

    void whatWasThereStays_data() {
        const Rows<QString, bool> row;
        row("the login",
            "CREATE LOGIN QuorraAdmin WITH PASSWORD = 'demo-admin-password'; "
            "ALTER SERVER ROLE dbcreator ADD MEMBER QuorraAdmin; "
            "ALTER SERVER ROLE bulkadmin ADD MEMBER QuorraAdmin",
            true);
        row("the login, other password", "CREATE LOGIN QuorraAdmin WITH PASSWORD = 'theirs'", false);
        row("a database", "CREATE DATABASE CostCentres", false);
    }

    void whatWasThereStays() {
        const auto [there, welcome] = thisRow<QString, bool>();
        m_host->execute(Sql::script(there));
        const int before = databases();
        const int logins = count("syslogins", "QuorraAdmin");
        if (welcome) {
            TestProgram program;
            program.logIn();
            QVERIFY(!program.ownsLogin());
        } else {
            QVERIFY_THROWS_EXCEPTION(std::runtime_error, TestProgram());
        }
        QCOMPARE(databases(), before);
        QCOMPARE(count("syslogins", "QuorraAdmin"), logins);
    }
};

static const AnnounceTest<GuestDemoTest> announced;
#include "GuestDemoTest.moc"
