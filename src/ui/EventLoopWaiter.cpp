#include "ui/EventLoopWaiter.h"

#include "db/DbError.h"
#include "db/WorkThread.h"
#include "ui/frmWaiting.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QEventLoop>
#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QThread>
#include <QWindow>

namespace {

using namespace std::chrono_literals;

constexpr auto longestWithoutTurn = 40ms; ///< a window that paints 25 times a second looks alive
constexpr auto waitsUnseen = 1s;          ///< a window that comes and goes at every action is a nuisance
constexpr auto cancelTakes = 2s;          ///< after this the server is let go

bool isPointing(QEvent::Type type) {
    switch (type) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::Wheel:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TabletPress:
    case QEvent::TabletRelease:
    case QEvent::ContextMenu:
    case QEvent::DragEnter:
    case QEvent::Drop:
        return true;
    default:
        return false;
    }
}

} // namespace

/// A key that was typed ahead.
struct EventLoopWaiter::Held {
    QPointer<QObject> receiver;
    std::unique_ptr<QEvent> event;
};

EventLoopWaiter::EventLoopWaiter() {
    m_tick.setInterval(100ms);
    m_takesOver.setSingleShot(true);
    connect(&m_takesOver, &QTimer::timeout, this, &EventLoopWaiter::endBusy);
}

EventLoopWaiter::~EventLoopWaiter() {
    delete m_window;
}

void EventLoopWaiter::beginBusy() {
    if (!m_busy.isValid()) {
        m_busy.start();
        m_sinceTurn.start();
        m_takesOver.start(0);
    }
}

/// The program takes input again.
void EventLoopWaiter::endBusy() {
    m_busy.invalidate();
    m_stopAsked = false;
    delete m_window;
    for (Held& held : std::exchange(m_held, {}))
        if (held.receiver) QCoreApplication::postEvent(held.receiver, held.event.release());
}

Waiter::Outcome EventLoopWaiter::await(Task& task, const QString& what, const std::function<void()>& cancel) {
    if (QThread::currentThread() != thread()) {
        task.waitUntilDone();
        return Done;
    }
    if (m_waiting) throw DbError(0, "The program is still waiting for an earlier answer of the server.");
    beginBusy();
    const auto sinceTurn = std::chrono::milliseconds(m_sinceTurn.elapsed());
    if (!m_stopAsked && task.waitFor(std::max(0ms, longestWithoutTurn - sinceTurn))) return Done;

    m_what = what;
    // Heard when the task is done, whoever is awake then.
    task.onDone([dispatcher = QAbstractEventDispatcher::instance()] { dispatcher->wakeUp(); });
    QElapsedTimer sinceCancel;
    while (!task.isDone()) {
        if (m_stopAsked && !sinceCancel.isValid()) {
            sinceCancel.start();
            cancel();
        }
        if (sinceCancel.isValid()
            && sinceCancel.elapsed() >= std::chrono::milliseconds(cancelTakes).count()) {
            m_stopAsked = false;
            task.onDone({});
            return Abandoned;
        }
        turnLoop(true);
    }
    return std::exchange(m_stopAsked, false) ? Stopped : Done;
}

void EventLoopWaiter::turn() {
    if (m_waiting || QThread::currentThread() != thread()) return;
    beginBusy();
    if (std::chrono::milliseconds(m_sinceTurn.elapsed()) >= longestWithoutTurn) turnLoop(false);
    if (std::exchange(m_stopAsked, false)) throw DbError::stopped();
}

/// One turn of the event loop, under the rules above. Before the window is shown, input stays where it
/// comes from; then it is looked through for what concerns the window.
void EventLoopWaiter::turnLoop(bool sleeps) {
    const QScopedValueRollback waiting(m_waiting, true);
    if (!m_window && std::chrono::milliseconds(m_busy.elapsed()) >= waitsUnseen) showWindow();
    if (m_window) m_window->showProgress(int(m_busy.elapsed() / 1000), m_stopAsked);

    m_takesOver.stop(); // a timer without an interval would keep the loop from sleeping
    qApp->installEventFilter(this);
    m_tick.start();
    QEventLoop::ProcessEventsFlags flags =
        m_window ? QEventLoop::AllEvents : QEventLoop::ExcludeUserInputEvents;
    if (sleeps) flags |= QEventLoop::WaitForMoreEvents;
    QEventLoop().processEvents(flags);
    m_tick.stop();
    qApp->removeEventFilter(this);
    m_takesOver.start(0);
    m_sinceTurn.start();
}

/// A child of the screen on top: other windows cannot be pressed while that is modal.
void EventLoopWaiter::showWindow() {
    QWidget* screen = QApplication::activeModalWidget();
    m_hadKeyboard = QGuiApplication::focusWindow();
    m_window = new frmWaiting(m_what, screen ? screen : QApplication::activeWindow());
    connect(m_window, &frmWaiting::stopPressed, this, [this] { m_stopAsked = true; });
}

bool EventLoopWaiter::isOwn(const QObject* receiver) const {
    for (const QObject* each = receiver; each; each = each->parent())
        if (m_window && each == m_window) return true;
    return m_window && receiver == m_window->windowHandle();
}

bool EventLoopWaiter::eventFilter(QObject* receiver, QEvent* event) {
    const QEvent::Type type = event->type();
    if (type == QEvent::Timer) return receiver != &m_tick && !receiver->isWindowType(); // which paint by one
    const bool own = isOwn(receiver);
    if (type == QEvent::Close && !own) {
        event->ignore();
        return true;
    }
    return (isPointing(type) && !own) || hold(receiver, event);
}

bool EventLoopWaiter::hold(QObject* receiver, QEvent* event) {
    const QEvent::Type type = event->type();
    if (type == QEvent::ShortcutOverride) {
        event->accept(); // or Qt takes the key for a shortcut, which would run now
        return true;
    }
    if (type != QEvent::KeyPress && type != QEvent::KeyRelease && type != QEvent::InputMethod) return false;
    if (m_window && type != QEvent::InputMethod && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape)
        m_stopAsked = true;
    else
        m_held.push_back(
            {isOwn(receiver) ? m_hadKeyboard.data() : receiver, std::unique_ptr<QEvent>(event->clone())});
    return true;
}
