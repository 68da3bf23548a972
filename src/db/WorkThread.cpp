#include "db/WorkThread.h"

#include <QtGlobal>
#include <deque>
#include <thread>

#ifdef __MINGW32__
/// The stack of the compiled regular expressions belongs to a thread, and is freed too late at its end by
/// this compiler's library: the program would crash. Without compiling them there is none.
static const bool withoutCompiledExpressions = qputenv("QT_ENABLE_REGEXP_JIT", "0");
#endif

bool Task::isDone() const {
    return waitFor(std::chrono::milliseconds(0));
}

bool Task::waitFor(std::chrono::milliseconds longest) const {
    std::unique_lock lock(m_mutex);
    return m_changed.wait_for(lock, longest, [this] { return m_done; });
}

void Task::waitUntilDone() const {
    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, [this] { return m_done; });
}

void Task::onDone(std::function<void()> tell) {
    {
        const std::lock_guard lock(m_mutex);
        if (!m_done) {
            m_tell = std::move(tell);
            return;
        }
    }
    if (tell) tell();
}

void Task::rethrow() const {
    const std::lock_guard lock(m_mutex);
    if (m_failure) std::rethrow_exception(m_failure);
}

void Task::run(const std::function<void()>& work) {
    std::exception_ptr failure;
    try {
        work();
    } catch (...) {
        failure = std::current_exception();
    }
    std::function<void()> tell;
    {
        const std::lock_guard lock(m_mutex);
        m_done = true;
        m_failure = failure;
        tell = std::move(m_tell);
    }
    m_changed.notify_all();
    if (tell) tell();
}

/// Shared with the thread, which may outlive its owner.
struct WorkThread::Queue {
    struct Entry {
        std::shared_ptr<Task> task;
        std::function<void()> work;
    };
    std::mutex mutex;
    std::condition_variable changed;
    std::deque<Entry> entries;
    bool closed = false;
    bool ended = false;

    void serve() {
        for (;;) {
            Entry next;
            {
                std::unique_lock lock(mutex);
                changed.wait(lock, [this] { return closed || !entries.empty(); });
                if (entries.empty()) break;
                next = std::move(entries.front());
                entries.pop_front();
            }
            next.task->run(next.work);
        }
        const std::lock_guard lock(mutex);
        ended = true;
        changed.notify_all();
    }
};

WorkThread::WorkThread() : m_queue(std::make_shared<Queue>()) {
    std::thread([queue = m_queue] { queue->serve(); }).detach();
}

WorkThread::~WorkThread() {
    std::unique_lock lock(m_queue->mutex);
    m_queue->closed = true;
    m_queue->changed.notify_all();
    if (!m_left) m_queue->changed.wait_for(lock, std::chrono::seconds(2), [this] { return m_queue->ended; });
}

std::shared_ptr<Task> WorkThread::post(std::function<void()> work) {
    auto task = std::make_shared<Task>();
    {
        const std::lock_guard lock(m_queue->mutex);
        m_queue->entries.push_back({task, std::move(work)});
    }
    m_queue->changed.notify_all();
    return task;
}
