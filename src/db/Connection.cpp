#include "db/Connection.h"

#include "db/DbError.h"

Connection::Connection(ConnectionString connectionString, Opener opener)
    : m_connectionString(std::move(connectionString)), m_opener(std::move(opener)),
      m_defaultDatabase(m_connectionString.initialCatalog) {}

void Connection::open() {
    ConnectionString target = m_connectionString;
    target.initialCatalog = m_defaultDatabase;
    m_server = m_opener(target);
}

void Connection::close() {
    m_server.reset();
}

Connection Connection::another(const QString& database) const {
    ConnectionString target = m_connectionString;
    target.initialCatalog = database;
    return {target, m_opener};
}

RecordSet Connection::query(const Sql& batch) {
    Results results;
    try {
        results = run(batch);
    } catch (const DbError& error) {
        if (!error.connectionLost() || m_inTransaction) throw;
        results = run(batch);
    }
    return results.sets.empty() ? RecordSet() : std::move(results.sets.front());
}

QString Connection::scalar(const Sql& batch) {
    const RecordSet set = query(batch);
    return set.isEmpty() ? QString() : set.cell(0, 0);
}

qint64 Connection::execute(const Sql& batch) {
    const Results results = run(batch);
    return results.counts.empty() ? 0 : results.counts.back();
}

Results Connection::run(const Sql& batch) {
    if (!m_server) {
        // What ran before in the transaction is gone with the lost session; going on would save half.
        if (m_inTransaction)
            throw DbError(0, "The connection to the server was lost.", batch.shown(), true);
        open();
    }
    return send(batch);
}

Results Connection::send(const Sql& batch) {
    ++m_statementCount;
    try {
        return m_server->execute(batch);
    } catch (const DbError& error) {
        if (error.connectionLost()) m_server.reset();
        throw;
    }
}

void Connection::setDefaultDatabase(const QString& database) {
    run(sql("USE {}", Name(database)));
    m_defaultDatabase = database;
}

Transaction::Transaction(Connection& connection) : m_connection(connection) {
    if (!m_connection.m_server) m_connection.open();
    m_connection.m_server->begin();
    m_connection.m_inTransaction = true;
}

Transaction::~Transaction() {
    if (!m_open) return;
    m_connection.m_inTransaction = false;
    if (!m_connection.m_server) return;
    try {
        m_connection.m_server->rollback();
    } catch (const DbError&) {
        m_connection.m_server.reset(); // the server undoes what a closed session left open
    }
}

void Transaction::commit() {
    if (!m_connection.m_server)
        throw DbError(0, "The connection to the server was lost.", {}, true);
    m_connection.m_server->commit();
    m_open = false;
    m_connection.m_inTransaction = false;
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
