#pragma once

#include "db/DbError.h"
#include "db/Server.h"

#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>

/// A server that does not answer.
class Silence {
public:
    /// Until the silence ends, on the server's thread.
    void keep() {
        std::unique_lock lock(m_mutex);
        m_changed.wait(lock, [this] { return m_over; });
    }
    void end() {
        const std::lock_guard lock(m_mutex);
        m_over = true;
        m_changed.notify_all();
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_changed;
    bool m_over = false;
};

/// When a FaultyServer fails, and what others do meanwhile. Shared by every session that is opened with it.
struct Fault {
    int step = 0;       ///< the batch or commit, counted from 1, that fails; 0 for none
    bool after = false; ///< it fails after it was carried out
    bool lost = false;  ///< the connection goes with it

    void arm(int failingStep) {
        step = failingStep;
        taken = 0;
    }
    int taken = 0; ///< steps since arm()

    /// What another user does, once, just before a batch that holds the text is sent ("begin" for the start
    /// of a transaction).
    void meanwhile(const QString& before, const std::function<void()>& act) {
        m_before = before;
        m_act = act;
    }
    /// Batches that hold the text get no answer until they are cancelled; a deaf server does not even hear
    /// that.
    void fallSilent(const QString& batches, bool deaf) {
        m_silentAt = batches;
        isDeaf = deaf;
        silence = std::make_shared<Silence>();
    }
    bool isDeaf = false;
    std::shared_ptr<Silence> silence;

    void comesTo(const QString& batch) {
        if (const auto kept = silence; kept && batch.contains(m_silentAt)) {
            kept->keep();
            throw DbError(0, "Operation cancelled by user.");
        }
        if (m_act && batch.contains(m_before)) std::exchange(m_act, {})();
    }

private:
    QString m_silentAt;
    QString m_before;
    std::function<void()> m_act;
};

/// A server whose n-th step fails, and where others come in between.
class FaultyServer : public Server {
public:
    FaultyServer(std::unique_ptr<Server> server, Fault& fault)
        : m_server(std::move(server)), m_fault(fault) {}

    Results execute(const Sql& batch) override {
        m_fault.comesTo(batch.text());
        return step([&] { return m_server->execute(batch); });
    }
    void begin() override {
        m_fault.comesTo("begin");
        m_server->begin();
    }
    void commit() override {
        try {
            step([&] {
                m_server->commit();
                return Results();
            });
        } catch (const DbError&) {
            if (!m_fault.after) m_server->rollback(); // as every server does with a commit that fails
            throw;
        }
    }
    void rollback() override { m_server->rollback(); }
    void cancel() override {
        if (m_fault.silence && !m_fault.isDeaf) m_fault.silence->end();
        m_server->cancel();
    }

private:
    Results step(const std::function<Results()>& action) {
        const bool fails = ++m_fault.taken == m_fault.step;
        if (fails && !m_fault.after) fail();
        Results results = action();
        if (fails) fail();
        return results;
    }
    [[noreturn]] void fail() const { throw DbError(50000, "Made to fail.", {}, m_fault.lost); }

    std::unique_ptr<Server> m_server;
    Fault& m_fault;
};
