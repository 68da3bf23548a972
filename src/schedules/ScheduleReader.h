#pragma once

#include "base/Moment.h"
#include "db/Connection.h"
#include "db/DbError.h"
#include "db/WorkThread.h"
#include "schedules/ScheduleList.h"

#include <QObject>
#include <QTimer>
#include <memory>
#include <optional>

struct Session;

/// Reads the schedules on a thread and a connection of its own, so that neither the window nor what its user
/// does waits for it. Reading, making rows and comparing them with those of the last reading happen there.
class ScheduleReader : public QObject {
    Q_OBJECT

public:
    explicit ScheduleReader(const Session& session);
    ~ScheduleReader() override;

    /// In the background: changed() or failed() tells the end. A reading that is under way goes on, unless
    /// it has taken so long that the server may have forgotten it. Since when there was no answer;
    /// nothing for a first request.
    std::optional<WallClock> request();
    /// Now, for whoever waits for it: what changed since the last answer. Interrupts a reading that is under
    /// way. Throws DbError.
    ScheduleChanges read();

signals:
    void changed(const ScheduleChanges& changes);
    void failed(const DbError& error);

private:
    struct Worker;

    void interrupt();
    void post();
    void deliver();

    const Session& m_session;
    std::shared_ptr<Worker> m_worker;
    std::shared_ptr<Task> m_task; ///< null while nothing is under way
    std::shared_ptr<std::optional<ScheduleChanges>> m_result;
    bool m_anew = false;                        ///< what the last reading found was not heard
    std::optional<WallClock> m_unansweredSince; ///< the first request without an answer
    Moment m_begun;                             ///< the reading that is under way
    QTimer m_delivers;
    WorkThread m_thread;
};
