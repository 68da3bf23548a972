#include "db/Connection.h"

#include "db/DbError.h"
#include "db/Refusal.h"
#include "db/ThreadedServer.h"

#include <utility>

Connection::Connection(ConnectionString connectionString, Opener opener, Waiter* waiter)
    : m_connectionString(std::move(connectionString)),
      m_opener(std::move(opener)),
      m_waiter(waiter),
      m_defaultDatabase(m_connectionString.initialCatalog) {}

void Connection::open() {
    ConnectionString target = m_connectionString;
    target.initialCatalog = m_defaultDatabase;
    // The user waits at a login as long as it takes; a reconnect must not hold up the screens.
    if (m_wasOpen) target.loginTimeout = 5;
    try {
        if (m_waiter)
            m_server = std::make_unique<ThreadedServer>(
                [opener = m_opener, target] { return opener(target); }, target.dataSource, *m_waiter);
        else
            m_server = m_opener(target);
    } catch (const Refusal& refusal) {
        // What a login may tell as wrong settings is an outage for a session that had been there.
        if (m_wasOpen) throw DbError(DbError::Unreachable, refusal.text(), {}, true);
        throw;
    }
    m_wasOpen = true;
}

void Connection::close() {
    m_server.reset();
}

Connection Connection::another(const QString& database) const {
    ConnectionString target = m_connectionString;
    target.initialCatalog = database;
    return {target, m_opener, m_waiter};
}

template <class Use>
auto Connection::onServer(Use use) {
    if (!m_server) open();
    try {
        return use(*m_server);
    } catch (const DbError& error) {
        if (error.connectionLost()) close();
        throw;
    }
}

template <class Attempt>
auto Connection::repeatedWhenLost(Attempt attempt) {
    // Without an open session the first attempt opens one itself; there is nothing to be found lost.
    const bool mayBeLost = isOpen() && !m_inTransaction;
    try {
        return attempt();
    } catch (const DbError& error) {
        if (!error.connectionLost() || !mayBeLost || error.number() == DbError::Stopped) throw;
        return attempt();
    }
}

RecordSet Connection::query(const Sql& batch) {
    Results results = repeatedWhenLost([&] { return run(batch); });
    return results.sets.empty() ? RecordSet() : std::move(results.sets.front());
}

std::vector<RecordSet> Connection::queryAll(const QList<Sql>& readings, const QString& database) {
    QList<Sql> batch = readings;
    if (!database.isEmpty()) {
        batch.prepend(sql("USE {}", Name(database)));
        batch.append(sql("USE {}", Name(m_defaultDatabase)));
    }
    try {
        Results results = repeatedWhenLost([&] { return run(Sql::join(batch, sql("\r\n"))); });
        if (qsizetype(results.sets.size()) != readings.size())
            throw DbError(0, "The server's answer is not whole.");
        return std::move(results.sets);
    } catch (const DbError&) {
        if (!database.isEmpty()) close(); // wherever it stands, the next use opens one in its place
        throw;
    }
}

std::vector<RecordSet> Connection::queryEach(const QList<Sql>& readings) {
    const auto rethrowGrave = [](const DbError& error) {
        if (error.connectionLost() || error.number() == DbError::Stopped) throw error;
    };
    if (readings.isEmpty()) return {};
    try {
        return queryAll(readings);
    } catch (const DbError& error) {
        rethrowGrave(error);
    }
    std::vector<RecordSet> answers;
    for (const Sql& reading : readings) try {
            answers.push_back(query(reading));
        } catch (const DbError& error) {
            rethrowGrave(error);
            answers.emplace_back();
        }
    return answers;
}

QString Connection::scalar(const Sql& batch) {
    const RecordSet set = query(batch);
    return set.isEmpty() ? QString() : set.cell(0, 0).toString();
}

qint64 Connection::changedRows(const Sql& batch) {
    const Results results = run(sql("{}\r\nSELECT @@ROWCOUNT", batch));
    return results.sets.empty() ? 0 : results.sets.back().row(0).integer(0);
}

int Connection::insertedKey(const Sql& insert) {
    const Results results = run(sql("{}\r\nSELECT @@IDentity", insert));
    return results.sets.empty() ? 0 : results.sets.back().row(0).integer(0);
}

Results Connection::run(const Sql& batch) {
    // What ran before in the transaction is gone with the lost session; going on would save half.
    if (!m_server && m_inTransaction)
        throw DbError(0, "The connection to the server was lost.", batch.shown(), true);
    return onServer([&](Server& server) {
        ++m_statementCount;
        return server.execute(batch);
    });
}

void Connection::executeAll(const QList<Sql>& statements, const std::function<void(qsizetype done)>& tell) {
    constexpr qsizetype longestBatch = 100'000; // characters: a server compiles it in a moment
    Sql batch = sql("");
    for (qsizetype done = 0; done < statements.size();) {
        batch += statements[done++];
        batch += sql("\n");
        if (done < statements.size() && batch.text().size() < longestBatch) continue;
        execute(std::exchange(batch, sql("")));
        if (tell) tell(done);
    }
}

void Connection::setDefaultDatabase(const QString& database) {
    const Sql use = sql("USE {}", Name(database));
    repeatedWhenLost([&] { return run(use); });
    m_defaultDatabase = database;
}

void Connection::begin() {
    repeatedWhenLost([&] { onServer([](Server& server) { server.begin(); }); });
    m_inTransaction = true;
    m_innerUndone = false;
}

Transaction::Transaction(Connection& connection)
    : m_connection(connection), m_outermost(!connection.m_inTransaction) {
    if (m_outermost) m_connection.begin();
}

Transaction::~Transaction() {
    if (!m_open) return;
    if (!m_outermost) {
        m_connection.m_innerUndone = true;
        return;
    }
    m_connection.m_inTransaction = false;
    if (!m_connection.m_server) return;
    try {
        m_connection.m_server->rollback();
    } catch (const DbError&) {
        m_connection.m_server.reset(); // the server undoes what a closed session left open
    }
}

void Transaction::commit() {
    if (m_outermost) {
        if (!m_connection.m_server) throw DbError(0, "The connection to the server was lost.", {}, true);
        if (m_connection.m_innerUndone)
            throw DbError(0, "A part of the change failed, so all of it is undone.");
    }
    m_open = false; // a commit that fails has undone everything itself
    if (!m_outermost) return;
    m_connection.m_inTransaction = false;
    try {
        m_connection.onServer([](Server& server) { server.commit(); });
    } catch (const DbError& error) {
        if (error.number() != DbError::Stopped) throw;
        throw DbError(DbError::StoppedCommit, error.text(), {}, error.connectionLost());
    }
}

DefaultDatabase::DefaultDatabase(Connection& connection, const QString& database)
    : m_connection(connection), m_former(connection.defaultDatabase()) {
    m_connection.setDefaultDatabase(database);
}

DefaultDatabase::~DefaultDatabase() {
    try {
        m_connection.setDefaultDatabase(m_former);
    } catch (const DbError&) {
        m_connection.close(); // the next use opens it again, with the former default database
        m_connection.m_defaultDatabase = m_former;
    }
}
