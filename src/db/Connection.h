#pragma once

#include "db/ConnectionString.h"
#include "db/Server.h"
#include "db/Waiter.h"

#include <functional>
#include <memory>

/// The shared connection of the whole program: a session on the server that reopens itself once when
/// it was lost, with the same default database. Copies of nothing, owned by the Session.
class Connection {
public:
    using Opener = std::function<std::unique_ptr<Server>(const ConnectionString&)>;

    /// With a waiter the server runs on a thread of its own and the caller waits by it; without one every
    /// call blocks. The waiter must outlive the connection.
    Connection(ConnectionString connectionString, Opener opener, Waiter* waiter = nullptr);
    /// Throws DbError when no session can be opened; the first time also a Refusal of what cannot be used.
    void open();
    void close();
    bool isOpen() const { return m_server != nullptr; }
    const ConnectionString& connectionString() const { return m_connectionString; }
    /// A further connection to the same server with another default database, not yet open.
    Connection another(const QString& database) const;
    /// The same for another thread, which blocks.
    Connection forThread() const { return {m_connectionString, m_opener}; }

    /// For reading: the batch's first record set (without columns when there is none). A connection
    /// found lost is reopened and the batch run again, unless a transaction is open.
    RecordSet query(const Sql& batch);
    /// Several readings in one round trip, which yield a record set each, in their order. Outside of
    /// transactions they may run in another default database.
    std::vector<RecordSet> queryAll(const QList<Sql>& readings, const QString& database = {});
    /// The same, but a reading that fails answers without columns and keeps no other from being read; unless
    /// the session is lost or the user stops.
    std::vector<RecordSet> queryEach(const QList<Sql>& readings);
    /// The first field of the first row of a query; null when there is no row.
    QString scalar(const Sql& batch);
    /// For writing. Never run twice; a connection known to be lost is reopened before.
    void execute(const Sql& batch) { run(batch); }
    /// The same, and how many rows its last statement changed: asked of the server, whose counts reach the
    /// driver only when the session's settings let them.
    qint64 changedRows(const Sql& batch);
    /// Sends one INSERT; the key that the server gave its row.
    int insertedKey(const Sql& insert);
    Results run(const Sql& batch);
    /// Writing statements, as many to a round trip as fit; `tell` hears how many are done.
    void executeAll(const QList<Sql>& statements, const std::function<void(qsizetype done)>& tell = {});

    bool inTransaction() const { return m_inTransaction; }
    const QString& defaultDatabase() const { return m_defaultDatabase; }
    void setDefaultDatabase(const QString& database);

    /// Batches sent since the connection was made.
    qint64 statementCount() const { return m_statementCount; }

private:
    friend class Transaction;
    friend class DefaultDatabase;
    /// Opens the session when there is none, and lets go of one that is found lost.
    template <class Use>
    auto onServer(Use use);
    template <class Attempt>
    auto repeatedWhenLost(Attempt attempt);
    void begin();

    ConnectionString m_connectionString;
    Opener m_opener;
    Waiter* m_waiter;
    std::unique_ptr<Server> m_server;
    QString m_defaultDatabase;
    bool m_wasOpen = false;
    bool m_inTransaction = false;
    bool m_innerUndone = false;
    qint64 m_statementCount = 0;
};

/// All or nothing: what runs between construction and commit() is undone when the scope is left in
/// any other way. A lost connection undoes it as well, on the server's side. One inside another is
/// part of the outer one, which alone commits, and cannot when the inner one was not committed.
class Transaction {
public:
    explicit Transaction(Connection& connection);
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;
    ~Transaction();
    void commit();

private:
    Connection& m_connection;
    bool m_outermost;
    bool m_open = true;
};

/// Another default database for one scope.
class DefaultDatabase {
public:
    DefaultDatabase(Connection& connection, const QString& database);
    DefaultDatabase(const DefaultDatabase&) = delete;
    DefaultDatabase& operator=(const DefaultDatabase&) = delete;
    ~DefaultDatabase();

private:
    Connection& m_connection;
    QString m_former;
};
