#include "db/Connection.h"
#include "errorOf.h"
#include "support/TestClass.h"

#include <deque>

namespace {

const DbError Lost(0, "The connection is gone.", {}, true);
const DbError Refused(DbError::InvalidObject, "Invalid object name.");

/// What a server was asked, and what it will answer: an error for the next calls that have one.
struct Script {
    QStringList log;
    std::deque<std::optional<DbError>> next;

    void step(const QString& what) {
        log += what;
        if (next.empty()) return;
        const auto error = next.front();
        next.pop_front();
        if (error) throw *error;
    }
};

class ScriptedServer : public Server {
public:
    explicit ScriptedServer(Script& script) : m_script(script) {}
    ~ScriptedServer() override { m_script.log += "close"; }
    Results execute(const Sql& batch) override {
        m_script.step(batch.text());
        RecordSet set({"a"});
        set.append(u"1");
        return {{set}, {3, 5}};
    }
    void begin() override { m_script.step("begin"); }
    void commit() override { m_script.step("commit"); }
    void rollback() override { m_script.step("rollback"); }
    void cancel() override {}

private:
    Script& m_script;
};

} // namespace

class ConnectionTest : public QObject {
    Q_OBJECT

    Script m_script;
    bool m_driverIsGone = false;
    std::unique_ptr<Connection> m_connection;

    /// The answers that follow are given to the calls after this one.
    void answers(std::deque<std::optional<DbError>> next) {
        m_script.log.clear();
        m_script.next = std::move(next);
    }

private slots:
    void init() {
        m_connection = std::make_unique<Connection>(ConnectionString{"u", "p", "Start", "host"},
                                                    [this](const ConnectionString& target) {
                                                        m_script.step("open " + target.initialCatalog);
                                                        if (m_driverIsGone) throw Refusal("No driver.");
                                                        return std::make_unique<ScriptedServer>(m_script);
                                                    });
        m_connection->open();
        answers({});
    }

    void aQueryReconnectsOnce() {
        m_connection->setDefaultDatabase("Other");
        answers({Lost});
        QCOMPARE(m_connection->scalar(sql("SELECT a")), "1");
        QCOMPARE(m_script.log, QStringList({"SELECT a", "close", "open Other", "SELECT a"}));

        answers({Lost, std::nullopt, Lost});
        QVERIFY(errorOf([&] { m_connection->query(sql("q")); })->connectionLost());
        QCOMPARE(m_script.log, QStringList({"q", "close", "open Other", "q", "close"}));
    }

    void anUnreachableServerIsAskedOnce() {
        m_connection->close();
        answers({Lost});
        QVERIFY(errorOf([&] { m_connection->query(sql("q")); })->connectionLost());
        QCOMPARE(m_script.log, QStringList({"open Start"}));
        m_connection->close();
        m_driverIsGone = true; // an outage as well: the screens and their timer know no refusal here
        QVERIFY(errorOf([&] { m_connection->query(sql("q")); })->connectionLost());
        m_driverIsGone = false;
        QCOMPARE(m_connection->scalar(sql("q")), "1"); // there again
    }

    void anOrdinaryErrorIsNotRepeated() {
        answers({Refused});
        QCOMPARE(errorOf([&] { m_connection->query(sql("q")); })->number(), DbError::InvalidObject);
        QCOMPARE(m_script.log, QStringList({"q"}));
        QVERIFY(m_connection->isOpen());
    }

    void writingIsNotRepeated() {
        answers({Lost});
        QVERIFY(errorOf([&] { m_connection->execute(sql("w")); })->connectionLost());
        QCOMPARE(m_script.log, QStringList({"w", "close"}));
        m_connection->execute(sql("w"));
        QCOMPARE(m_script.log.mid(2), QStringList({"open Start", "w"}));
    }

    void aDefaultDatabaseLastsForItsScope() {
        {
            const DefaultDatabase scope(*m_connection, "x]y");
            QCOMPARE(m_connection->defaultDatabase(), "x]y");
        }
        QCOMPARE(m_script.log, QStringList({"USE [x]]y]", "USE [Start]"}));

        answers({Refused});
        QVERIFY(errorOf([&] { const DefaultDatabase scope(*m_connection, "Missing"); }));
        QCOMPARE(m_connection->defaultDatabase(), "Start");
        QCOMPARE(m_script.log, QStringList({"USE [Missing]"}));

        answers({std::nullopt, Refused});
        { const DefaultDatabase scope(*m_connection, "Other"); }
        m_connection->execute(sql("w"));
        QCOMPARE(m_script.log.mid(2), QStringList({"close", "open Start", "w"}));

        answers({Lost});
        m_connection->setDefaultDatabase("Other");
        QCOMPARE(m_script.log, QStringList({"USE [Other]", "close", "open Start", "USE [Other]"}));
    }

    void aTransactionIsKeptOrUndone() {
        {
            Transaction transaction(*m_connection);
            m_connection->execute(sql("w"));
            Transaction(*m_connection).commit(); // a part of the outer one
            transaction.commit();
        }
        QCOMPARE(m_script.log, QStringList({"begin", "w", "commit"}));

        answers({std::nullopt, Refused});
        QVERIFY(errorOf([&] {
            Transaction transaction(*m_connection);
            m_connection->execute(sql("w"));
            transaction.commit();
        }));
        QCOMPARE(m_script.log, QStringList({"begin", "w", "rollback"}));

        answers({std::nullopt, Refused});
        QVERIFY(errorOf([&] { Transaction(*m_connection).commit(); }));
        QCOMPARE(m_script.log, QStringList({"begin", "commit"})); // the server undid it itself

        answers({std::nullopt, Refused});
        { Transaction undone(*m_connection); }
        QCOMPARE(m_script.log, QStringList({"begin", "rollback", "close"})); // which undoes it for sure
    }

    void anInnerFailureUndoesAll() {
        QVERIFY(errorOf([&] {
            Transaction transaction(*m_connection);
            { Transaction inner(*m_connection); }
            transaction.commit();
        }));
        QCOMPARE(m_script.log, QStringList({"begin", "rollback"}));
        Transaction(*m_connection).commit();
        QCOMPARE(m_script.log.mid(2), QStringList({"begin", "commit"}));
    }

    void aConnectionFoundLostAtBeginIsReopened() {
        answers({Lost});
        Transaction(*m_connection).commit();
        QCOMPARE(m_script.log, QStringList({"begin", "close", "open Start", "begin", "commit"}));
    }

    void aTransactionLostInTheMiddleStaysLost() {
        answers({std::nullopt, std::nullopt, Lost});
        {
            Transaction transaction(*m_connection);
            m_connection->execute(sql("w1"));
            QVERIFY(errorOf([&] { m_connection->query(sql("q")); })->connectionLost());
            QVERIFY(errorOf([&] { m_connection->execute(sql("w2")); })->connectionLost());
            QVERIFY(errorOf([&] { m_connection->query(sql("q")); })->connectionLost());
            QVERIFY(errorOf([&] { transaction.commit(); })->connectionLost());
        }
        QCOMPARE(m_script.log, QStringList({"begin", "w1", "q", "close"}));
        Transaction(*m_connection).commit();
        QCOMPARE(m_script.log.mid(4), QStringList({"open Start", "begin", "commit"}));
    }
};

static const AnnounceTest<ConnectionTest> announced;

#include "ConnectionTest.moc"
