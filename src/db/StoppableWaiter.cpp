#include "db/StoppableWaiter.h"

#include "db/DbError.h"
#include "db/WorkThread.h"

Waiter::Outcome StoppableWaiter::await(Task& task, const QString&, const std::function<void()>& cancel) {
    using namespace std::chrono_literals;
    while (!task.waitFor(20ms)) {
        if (!m_stopAsked) continue;
        cancel();
        return task.waitFor(2s) ? Stopped : Abandoned;
    }
    return m_stopAsked ? Stopped : Done;
}

void StoppableWaiter::turn() {
    if (m_stopAsked) throw DbError::stopped();
}
