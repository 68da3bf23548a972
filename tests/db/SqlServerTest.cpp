#include "db/Connection.h"
#include "db/OdbcServer.h"
#include "errorOf.h"
#include "support/TestClass.h"

#include <QUuid>

/// The same session against the real server that SCHEDULER_TEST_SERVER names, in a database of its own.
class SqlServerTest : public QObject {
    Q_OBJECT

    const QString m_database = "SchedulerTest_" + QUuid::createUuid().toString(QUuid::Id128);
    std::unique_ptr<Connection> m_connection;

    static std::unique_ptr<Server> open(const ConnectionString& target) {
        OdbcSettings settings;
        settings.trustServerCertificate = true; // servers for tests sign their own
        return OdbcServer::open(target, settings);
    }
    static ConnectionString target() {
        return {qEnvironmentVariable("SCHEDULER_TEST_USER"), qEnvironmentVariable("SCHEDULER_TEST_PASSWORD"),
                "master", qEnvironmentVariable("SCHEDULER_TEST_SERVER")};
    }
    int errorNumber(const Sql& batch) {
        const auto error = errorOf([&] { m_connection->execute(batch); });
        return error ? error->number() : 0;
    }

private slots:
    void initTestCase() {
        if (target().dataSource.isEmpty() || target().dataSource.startsWith("file:")) return;
        m_connection = std::make_unique<Connection>(target(), open);
        m_connection->execute(sql("CREATE DATABASE {}", Name(m_database)));
        m_connection->setDefaultDatabase(m_database);
        m_connection->execute(sql("CREATE TABLE t (ID int IDENTITY, a nvarchar(max), b varchar(10), m money, "
                                  "d datetime, f bit)"));
    }

    void init() { // a skip in initTestCase would skip the classes that follow as well
        if (!m_connection) QSKIP("SCHEDULER_TEST_SERVER names no server that ODBC reaches.");
    }

    void cleanupTestCase() {
        if (!m_connection) return;
        m_connection->setDefaultDatabase("master");
        m_connection->execute(sql("DROP DATABASE {}", Name(m_database)));
    }

    void valuesComeBackWhole() {
        const QString text = QString("Ω😀'x").repeated(50'000);
        const Results results = m_connection->run(sql(
            "INSERT INTO t (a, b, m, d, f) VALUES ({}, {}, 12.34, {}, {}) SELECT * FROM t; SELECT @@IDENTITY",
            text, QString("éàüöäßñçøå"), QDate(2008, 4, 1), true));
        QCOMPARE(results.counts.size(), 1);
        QCOMPARE(results.counts.front(), 1);
        QCOMPARE(results.sets.size(), 2);
        const Row row = results.sets.front().row(0);
        QVERIFY(row.text("a") == text);
        QCOMPARE(row.text("b"), "éàüöäßñçøå");
        QCOMPARE(row.text("m"), "12.3400");
        QCOMPARE(row.date("d"), QDate(2008, 4, 1));
        QVERIFY(row.flag("f"));
        QCOMPARE(results.sets.back().row(0).integer(0), 1);
        const RecordSet nulls = m_connection->query(sql("SELECT NULL, CAST('' AS varchar(1))"));
        QVERIFY(nulls.row(0).isNull(0) && !nulls.row(0).isNull(1));
    }

    void errorsCarryTheServersNumber() {
        QCOMPARE(errorNumber(sql("SELECT * FROM nowhere")), DbError::InvalidObject);
        QCOMPARE(errorNumber(sql("SELECT nothing FROM t")), DbError::InvalidColumn);
        QCOMPARE(errorNumber(sql("SELECT 1 SELECT nothing FROM t")), DbError::InvalidColumn);
        QCOMPARE(errorNumber(sql("CREATE TABLE t (a int)")), DbError::AlreadyExists);
        QCOMPARE(errorNumber(sql("EXEC spNowhere")), DbError::NoSuchProcedure);
        QCOMPARE(errorNumber(sql("SELECT 1 PRINT 'x' RAISERROR('late', 16, 1)")), 50000);
        const int tooLong = errorNumber(sql("INSERT INTO t (b) VALUES ('12345678901')"));
        QVERIFY(tooLong == DbError::TextTooLong || tooLong == DbError::TextTooLongNamed);
        QCOMPARE(m_connection->scalar(sql("SELECT 7")), "7");
    }

    void wrongLoginsAreRefused() {
        ConnectionString wrong = target();
        wrong.initialCatalog = "NoSuchDatabase";
        QVERIFY(errorOf([&] { open(wrong); })->isDatabaseMissing());
        wrong.password += "x";
        QCOMPARE(errorOf([&] { open(wrong); })->number(), DbError::LoginFailed);
    }

    void transactionsAreUndoneOrKept() {
        const auto count = [&] { return m_connection->scalar(sql("SELECT COUNT(*) FROM t WHERE b = 'tr'")); };
        for (const bool commits : {false, true}) {
            QCOMPARE(count(), "0");
            Transaction transaction(*m_connection);
            m_connection->execute(sql("SET NOCOUNT ON"));
            QCOMPARE(m_connection->changedRows(sql("INSERT INTO t (b) VALUES ('tr')")), 1);
            QVERIFY(errorNumber(sql("SELECT nothing FROM t")));
            if (commits) transaction.commit();
        }
        QCOMPARE(count(), "1");
        QCOMPARE(m_connection->scalar(sql("SELECT @@TRANCOUNT")), "0");
    }

    void aKilledSessionIsReopened() {
        const QString session = m_connection->scalar(sql("SELECT @@SPID"));
        Connection other(target(), open);
        other.execute(sql("KILL {}", session.toInt()));
        QCOMPARE(m_connection->scalar(sql("SELECT DB_NAME()")).toLower(), m_database.toLower());
    }
};

static const AnnounceTest<SqlServerTest> announced;

#include "SqlServerTest.moc"
