#pragma once

#include "db/RecordSet.h"
#include "db/Sql.h"

/// An open session on a database server. Everything above db/ talks to this interface; which server
/// answers is decided once, when the connection is opened.
class Server {
public:
    Server() = default;
    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;
    virtual ~Server() = default;

    /// Runs one batch to its last result. An error in any of its statements throws DbError; results
    /// that came before it are dropped, their effects stay unless a transaction is open.
    virtual Results execute(const Sql& batch) = 0;

    /// One transaction at a time. After a failed commit the transaction is rolled back.
    virtual void begin() = 0;
    virtual void commit() = 0;
    virtual void rollback() = 0;

    /// From another thread: the call in progress, if there is one, is to fail soon.
    virtual void cancel() = 0;
};
