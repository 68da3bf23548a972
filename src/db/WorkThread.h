#pragma once

#include <chrono>
#include <condition_variable>
#include <exception>
#include <functional>
#include <memory>
#include <mutex>

/// Work on another thread that somebody waits for. Every function may be called from any thread.
class Task {
public:
    bool isDone() const;
    /// Blocks; true when the work is done.
    bool waitFor(std::chrono::milliseconds longest) const;
    void waitUntilDone() const;
    /// Is told, on the working thread, that the work is done; at once when it is. The last one asked is told.
    void onDone(std::function<void()> tell);
    /// Throws what the work threw.
    void rethrow() const;

    void run(const std::function<void()>& work);

private:
    mutable std::mutex m_mutex;
    mutable std::condition_variable m_changed;
    bool m_done = false;
    std::exception_ptr m_failure;
    std::function<void()> m_tell;
};

/// A thread that does what is posted to it, one after the other. Work must own all that it touches: one that
/// hangs when the WorkThread is destroyed is left to itself, and ends whenever it may.
class WorkThread {
public:
    WorkThread();
    WorkThread(const WorkThread&) = delete;
    WorkThread& operator=(const WorkThread&) = delete;
    /// Waits for what was posted, two seconds at most, and not at all after leave().
    ~WorkThread();
    void leave() { m_left = true; }

    std::shared_ptr<Task> post(std::function<void()> work);

private:
    struct Queue;

    std::shared_ptr<Queue> m_queue;
    bool m_left = false;
};
