#pragma once

#include <QApplication>
#include <QTest>
#include <QTimer>
#include <QWidget>
#include <functional>

/// Does something in the next modal screen that opens, e.g. one that a click on a button shows with
/// exec(): call this first, then click. `act` must close the screen in the end. Nested screens: call it
/// again inside `act` before clicking there. The test fails when no such screen comes; one that fails inside
/// `act` closes what is open, or it would wait for ever.
template <class Screen>
void inNextModal(std::function<void(Screen&)> act) {
    auto* timer = new QTimer(qApp);
    QObject::connect(timer, &QTimer::timeout, timer, [timer, act, tries = 0]() mutable {
        auto* screen = qobject_cast<Screen*>(QApplication::activeModalWidget());
        // Not active yet: its caller's shortcuts would still take the keys.
        if (!(screen && screen->isActiveWindow()) && ++tries <= 500) return;
        timer->stop();
        timer->deleteLater();
        const auto run = act; // the closure goes with the timer
        if (screen)
            run(*screen);
        else
            QTest::qFail("the expected screen did not open", __FILE__, __LINE__);
        if (!QTest::currentTestFailed()) return;
        while (QWidget* open = QApplication::activeModalWidget()) open->hide();
    });
    timer->start(10);
}
