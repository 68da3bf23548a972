#include "schedules/ScheduleReader.h"

#include "base/Session.h"
#include "db/StoppableWaiter.h"

#include <chrono>

/// What lives on the thread. It outlives the reader when the server hangs.
struct ScheduleReader::Worker {
    explicit Worker(const Session& session)
        : user{session.userName, session.isAdministrator()},
          connection(session.connection->connectionString(), session.opener, &waiter) {}

    ScheduleChanges read() {
        ScheduleReading next = readSchedules(connection, user);
        ScheduleChanges changes = last ? next.changesSince(*last) : next.all();
        last = std::move(next);
        return changes;
    }

    const ScheduleUser user;
    StoppableWaiter waiter;
    Connection connection;
    std::optional<ScheduleReading> last; ///< nothing when its changes may not have been heard of
};

ScheduleReader::ScheduleReader(const Session& session)
    : m_session(session), m_worker(std::make_shared<Worker>(session)) {
    m_delivers.setSingleShot(true);
    m_delivers.setInterval(std::chrono::milliseconds(1));
    connect(&m_delivers, &QTimer::timeout, this, &ScheduleReader::deliver);
}

ScheduleReader::~ScheduleReader() {
    m_worker->waiter.stop();
    if (m_task) m_task->onDone({});
}

void ScheduleReader::post() {
    m_result = std::make_shared<std::optional<ScheduleChanges>>();
    m_task = m_thread.post([worker = m_worker, result = m_result, anew = std::exchange(m_anew, false)] {
        worker->waiter.makeReady();
        if (anew) worker->last.reset();
        *result = worker->read();
    });
}

/// What the reading found will not be heard.
void ScheduleReader::interrupt() {
    const auto interrupted = std::exchange(m_task, nullptr);
    if (!interrupted) return;
    interrupted->onDone({});
    m_worker->waiter.stop();
    m_anew = true;
}

std::optional<WallClock> ScheduleReader::request() {
    constexpr qint64 longest = 60; // seconds
    const Moment now = Moment::now();
    if (m_task && m_begun.secsTo(now) < longest) return m_unansweredSince;
    const std::optional<WallClock> since = m_task ? m_unansweredSince : std::nullopt;
    interrupt();
    m_begun = now;
    m_unansweredSince = since.value_or(now.wall);
    post();
    // By a timer, which waits until nothing else is in the middle of its work.
    m_task->onDone([this] {
        QMetaObject::invokeMethod(&m_delivers, qOverload<>(&QTimer::start), Qt::QueuedConnection);
    });
    return since;
}

void ScheduleReader::deliver() {
    if (!m_task || !m_task->isDone()) return; // it was interrupted meanwhile
    const auto task = std::exchange(m_task, nullptr);
    try {
        task->rethrow();
    } catch (const DbError& error) {
        emit failed(error);
        return;
    } catch (const std::exception& error) { // a driver that is gone, say: nothing may leave an event handler
        emit failed(DbError(0, QString::fromUtf8(error.what())));
        return;
    }
    emit changed(**m_result);
}

ScheduleChanges ScheduleReader::read() {
    interrupt();
    post();
    const auto task = std::exchange(m_task, nullptr);
    if (!m_session.waiter) {
        task->waitUntilDone();
    } else if (m_session.waiter->await(*task, m_session.serverName,
                                       [worker = m_worker] { worker->waiter.stop(); })
               != Waiter::Done) {
        m_anew = true;
        throw DbError::stopped();
    }
    task->rethrow();
    return std::move(**m_result);
}
