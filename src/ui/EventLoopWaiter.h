#pragma once

#include "db/Waiter.h"

#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <QTimer>
#include <memory>
#include <vector>

class QWindow;
class frmWaiting;

/// Waits in an event loop of its own, in which the program's windows paint and nothing else happens: a wait
/// may stand in the middle of a save. So until the wait is over
///   - timers of the program do not fire; they come at their next turn,
///   - no window closes, whoever asks for it, the desktop's end of session included,
///   - keys are kept and delivered when the program takes input again; the mouse does nothing but press Stop.
/// Whatever is to happen later must therefore be put off with a timer, never by a queued call.
/// After a second frmWaiting says what is waited for and offers to stop.
class EventLoopWaiter : public QObject, public Waiter {
    Q_OBJECT

public:
    EventLoopWaiter();
    ~EventLoopWaiter() override;

    Outcome await(Task& task, const QString& what, const std::function<void()>& cancel) override;
    void turn() override;

protected:
    bool eventFilter(QObject* receiver, QEvent* event) override;

private:
    struct Held;

    void beginBusy();
    void endBusy();
    void turnLoop(bool sleeps);
    void showWindow();
    bool isOwn(const QObject* receiver) const;
    bool hold(QObject* receiver, QEvent* event);

    bool m_waiting = false;
    bool m_stopAsked = false;
    QElapsedTimer m_busy; ///< since the program last took input; invalid while it does
    QElapsedTimer m_sinceTurn;
    QTimer m_tick;      ///< wakes the loop to count the seconds
    QTimer m_takesOver; ///< fires when the program's own event loop turns again
    QString m_what;
    QPointer<frmWaiting> m_window;   ///< its parent may go first
    QPointer<QWindow> m_hadKeyboard; ///< before the window was shown
    std::vector<Held> m_held;
};
