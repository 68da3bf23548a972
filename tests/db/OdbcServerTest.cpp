#include "db/OdbcServer.h"
#include "errorOf.h"
#include "support/TestClass.h"

#include <QTemporaryDir>
#include <atomic>
#include <thread>

namespace {

/// The text in letters that reach a driver without wide functions whatever the locale is.
Sql literal(const QString& text) {
    QString escaped;
    for (const QChar letter : text) escaped += QString("\\u%1").arg(letter.unicode(), 4, 16, QChar(u'0'));
    return Sql::script("json_extract('[\"" + escaped + "\"]', '$[0]')");
}

} // namespace

/// The ODBC session against a driver that needs no server. Its name is the one that Debian, and the
/// driver's own installer elsewhere, register.
class OdbcServerTest : public QObject {
    Q_OBJECT

    QTemporaryDir m_folder;
    std::unique_ptr<OdbcServer> m_server;

    std::unique_ptr<OdbcServer> connect(const QString& file) const {
        return OdbcServer::open({"", "", file, ""}, {"SQLite3"});
    }
    RecordSet query(const Sql& batch) {
        const Results results = m_server->execute(batch);
        return results.sets.empty() ? RecordSet() : results.sets.front();
    }

private slots:
    void init() {
        try {
            m_server = connect(m_folder.filePath("test.db"));
        } catch (const DbError& error) {
            throw;
        }
        m_server->execute(sql("DROP TABLE IF EXISTS t"));
        m_server->execute(sql("CREATE TABLE t (a TEXT, n INTEGER UNIQUE)"));
    }

    void textsArriveWhole_data() {
        QTest::addColumn<QString>("text");
        QTest::newRow("empty") << "";
        QTest::newRow("apostrophe") << "O'Brien";
        QTest::newRow("accents") << "éàüöäßñçøå";
        QTest::newRow("emoji") << "a😀b👩‍👩‍👧";
        for (const int length : {4094, 4095, 4096, 4097, 8190, 200'000}) // about the pieces' borders
            QTest::addRow("%d letters", length) << QString(length - 2, u'Ω') + "yz";
        for (const int before : {4093, 4094, 4095})
            QTest::addRow("emoji behind %d letters", before)
                << QString(before, 'x') + "😀" + QString(4092, 'x') + "😀";
    }

    void textsArriveWhole() {
        QFETCH(QString, text);
        m_server->execute(sql("INSERT INTO t VALUES ({}, 1)", literal(text)));
        const RecordSet set = query(sql("SELECT a, n, a AS again FROM t"));
        QCOMPARE(set.columns(), QStringList({"a", "n", "again"}));
        QCOMPARE(set.rowCount(), 1);
        QVERIFY(!set.row(0).isNull(0));
        QVERIFY(set.row(0).text(0) == text); // a comparison that would not print all of it
        QVERIFY(set.row(0).text(2) == text);
        QCOMPARE(set.row(0).integer(1), 1);
    }

    void nullIsNotEmpty() {
        const RecordSet set = query(sql("SELECT NULL AS a, '' AS b UNION ALL SELECT 'x', NULL"));
        QVERIFY(set.row(0).isNull(0) && !set.row(0).isNull(1));
        QVERIFY(!set.row(1).isNull(0) && set.row(1).isNull(1));
        QCOMPARE(query(sql("SELECT a FROM t")).rowCount(), 0);
    }

    void countsAreReported() {
        m_server->execute(sql("INSERT INTO t VALUES ('a', 1), ('b', 2), ('c', 3)"));
        QCOMPARE(m_server->execute(sql("UPDATE t SET a = 'x' WHERE n > 1")).counts.back(), 2);
        QCOMPARE(m_server->execute(sql("DELETE FROM t WHERE n > 9")).counts.back(), 0);
    }

    void anErrorNamesItsStatement() {
        const auto error = errorOf([&] { m_server->execute(sql("SELECT {} FROM nowhere", Secret{"pw"})); });
        QVERIFY(error);
        QVERIFY2(error->text().startsWith("no such table: nowhere"), qPrintable(error->text()));
        QCOMPARE(error->statement(), "SELECT N'***' FROM nowhere");
        QVERIFY(!error->connectionLost());
        QCOMPARE(query(sql("SELECT 7")).row(0).text(0), "7"); // the session goes on
    }

    void aTransactionIsUndoneOrKept() {
        m_server->begin();
        m_server->execute(sql("INSERT INTO t VALUES ('a', 1)"));
        m_server->rollback();
        QCOMPARE(query(sql("SELECT COUNT(*) FROM t")).row(0).text(0), "0");
        m_server->begin();
        m_server->execute(sql("INSERT INTO t VALUES ('a', 1)"));
        QVERIFY(errorOf([&] { m_server->execute(sql("INSERT INTO t VALUES ('b', 1)")); }));
        m_server->commit();
        m_server->execute(sql("INSERT INTO t VALUES ('c', 3)")); // outside a transaction: kept at once
        m_server->begin();
        m_server->execute(sql("DELETE FROM t"));
        m_server.reset(); // undone, and the file is free
        m_server = connect(m_folder.filePath("test.db"));
        QCOMPARE(query(sql("SELECT COUNT(*) FROM t")).row(0).text(0), "2");
    }

    void aFailedCommitIsUndone() {
        m_server->execute(sql("PRAGMA foreign_keys = ON"));
        m_server->execute(
            sql("CREATE TABLE IF NOT EXISTS child (n REFERENCES t (n) DEFERRABLE INITIALLY DEFERRED)"));
        m_server->begin();
        m_server->execute(sql("INSERT INTO child VALUES (99)"));
        QVERIFY(errorOf([&] { m_server->commit(); }));
        QCOMPARE(query(sql("SELECT COUNT(*) FROM child")).row(0).text(0), "0");
        m_server->execute(sql("INSERT INTO t VALUES ('kept', 1)"));
        m_server.reset();
        m_server = connect(m_folder.filePath("test.db"));
        QCOMPARE(query(sql("SELECT a FROM t")).row(0).text(0), "kept");
    }

    void whatRunsCanBeCancelled() {
        std::atomic<bool> over = false;
        std::thread user([&] {
            while (!over) { // the statement may not run yet
                std::this_thread::sleep_for(std::chrono::milliseconds(20));
                m_server->cancel();
            }
        });
        const auto endless =
            sql("WITH RECURSIVE c(x) AS (SELECT 1 UNION ALL SELECT x + 1 FROM c) SELECT count(*) FROM c");
        QVERIFY(errorOf([&] { m_server->execute(endless); }));
        over = true;
        user.join();
        QCOMPARE(query(sql("SELECT 7")).row(0).text(0), "7"); // the session goes on
    }

    void aMissingDriverIsNamed() {
        const auto named = errorOf<Refusal>([] {
            OdbcServer::open({"u", "p", "d", "host"}, {"No Such Driver"});
        });
        QVERIFY2(named && named->text().contains("No Such Driver"), "by name");
        const auto library = errorOf([] {
            OdbcServer::open({"u", "p", "d", "host"}, {"/none/libtdsodbc.so"});
        });
        QVERIFY2(library && library->text().contains("/none/libtdsodbc.so"), "by library");
        QVERIFY(!library->connectionLost());
    }

    void aServerThatIsNotThereIsUnreachable() {
        std::optional<DbError> error = errorOf([] {
            OdbcServer::open({"u", "p", "d", "127.0.0.1,1"}, {"FreeTDS"});
        });
        QVERIFY(error);
        QCOMPARE(error->number(), DbError::Unreachable);
        QVERIFY(error->connectionLost());
    }
};

static const AnnounceTest<OdbcServerTest> announced;

#include "OdbcServerTest.moc"
