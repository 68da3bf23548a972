#include "db/ThreadedServer.h"

#include "db/DbError.h"

#include <atomic>
#include <mutex>
#include <thread>

/// Shared with the work on the thread, which may outlive the ThreadedServer.
struct ThreadedServer::Session {
    std::shared_ptr<Server> server() const {
        const std::lock_guard lock(mutex);
        return opened;
    }
    void set(std::shared_ptr<Server> server) {
        const std::lock_guard lock(mutex);
        opened.swap(server); // what was there is closed behind the lock
    }

    std::atomic<int> calls = 0;

private:
    mutable std::mutex mutex;
    std::shared_ptr<Server> opened;
};

ThreadedServer::ThreadedServer(Opener open, const QString& name, Waiter& waiter)
    : m_session(std::make_shared<Session>()), m_name(name), m_waiter(waiter) {
    const bool stopped = call([session = m_session, open = std::move(open)] { session->set(open()); });
    if (stopped) throw DbError::stopped();
}

ThreadedServer::~ThreadedServer() {
    m_thread.post([session = m_session] { session->set({}); });
}

bool ThreadedServer::call(const std::function<void()>& work, const QString& statement) {
    const int number = ++m_session->calls;
    const std::shared_ptr<Task> task = m_thread.post(work);
    // On a thread of its own: not every driver lets go of the thread that cancels. What comes late is not to
    // hit the next call.
    const auto cancel = [session = m_session, number] {
        std::thread([session, number] {
            const auto server = session->server();
            if (server && session->calls == number) server->cancel();
        }).detach();
    };
    const Waiter::Outcome outcome = m_waiter.await(*task, m_name, cancel);
    if (outcome == Waiter::Abandoned) {
        m_thread.leave();
        throw DbError::stopped(statement, true);
    }
    if (outcome == Waiter::Done) {
        task->rethrow();
        return false;
    }
    try {
        task->rethrow();
        return true;
    } catch (const DbError& error) {
        throw DbError::stopped(statement, error.connectionLost());
    }
}

Results ThreadedServer::execute(const Sql& batch) {
    const auto results = std::make_shared<Results>();
    const bool stopped =
        call([session = m_session, results, batch] { *results = session->server()->execute(batch); },
             batch.shown());
    // What stands alone is done; a part of something larger is not to be gone on with.
    if (stopped && m_inTransaction) throw DbError::stopped(batch.shown());
    return std::move(*results);
}

void ThreadedServer::begin() {
    const bool stopped = call([session = m_session] { session->server()->begin(); });
    m_inTransaction = true;
    if (!stopped) return;
    rollback();
    throw DbError::stopped();
}

void ThreadedServer::commit() {
    m_inTransaction = false;
    call([session = m_session] { session->server()->commit(); });
}

void ThreadedServer::rollback() {
    m_inTransaction = false;
    call([session = m_session] { session->server()->rollback(); });
}

void ThreadedServer::cancel() {
    if (const auto server = m_session->server()) server->cancel();
}
