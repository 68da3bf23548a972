#pragma once

#include "db/Waiter.h"

#include <atomic>

/// Waits on a thread without a window, until another thread stops it. To be made ready before each use.
class StoppableWaiter : public Waiter {
public:
    Outcome await(Task& task, const QString& what, const std::function<void()>& cancel) override;
    void turn() override;

    void stop() { m_stopAsked = true; } ///< from any thread
    void makeReady() { m_stopAsked = false; }

private:
    std::atomic<bool> m_stopAsked = false;
};
