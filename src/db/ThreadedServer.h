#pragma once

#include "db/Server.h"
#include "db/Waiter.h"
#include "db/WorkThread.h"

#include <functional>
#include <memory>

/// A session on a server that lives on a thread of its own, so that whoever waits for it stays alive. Every
/// call returns when the server has answered, or when the user has stopped it: then it throws a DbError with
/// the number Stopped. A server that does not even answer the cancel is let go with its thread, and the
/// session counts as lost.
class ThreadedServer : public Server {
public:
    using Opener = std::function<std::unique_ptr<Server>()>;

    /// Opens the session on its thread; throws what `open` throws. `name` is the server's, as users know it.
    ThreadedServer(Opener open, const QString& name, Waiter& waiter);
    /// The session is closed on its thread, however long that takes there.
    ~ThreadedServer() override;

    Results execute(const Sql& batch) override;
    void begin() override;
    void commit() override;
    void rollback() override;
    void cancel() override;

private:
    struct Session;

    /// True when the user asked to stop and the work ended well all the same.
    bool call(const std::function<void()>& work, const QString& statement = {});

    std::shared_ptr<Session> m_session;
    QString m_name;
    Waiter& m_waiter;
    WorkThread m_thread;
    bool m_inTransaction = false;
};
