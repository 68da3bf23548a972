#pragma once

#include <QString>
#include <functional>

class Task;

/// How a thread spends the time until another one has done what it asked for. A program with a window lets it
/// paint, and its user stop; see EventLoopWaiter.
class Waiter {
public:
    enum Outcome {
        Done,
        Stopped,   ///< the user asked to stop, and the task has ended, with whatever came of it
        Abandoned, ///< the same, but the task goes on
    };

    virtual ~Waiter() = default;

    /// `what` says for what, in words for the user; `cancel` asks the task to end early.
    virtual Outcome await(Task& task, const QString& what, const std::function<void()>& cancel) = 0;
    /// For long work of the waiting thread itself, again and again: throws the DbError of stopped() when the
    /// user asked to stop.
    virtual void turn() = 0;
};
