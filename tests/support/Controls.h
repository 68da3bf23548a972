#pragma once

#include <QAbstractButton>
#include <QWidget>

/// A control of a screen by its object name; ends the test program when it is missing.
template <class T = QWidget>
T& child(const QWidget& screen, const QString& name) {
    T* found = screen.findChild<T*>(name);
    if (!found) qFatal("the screen has no %s", qPrintable(name));
    return *found;
}

inline void press(const QWidget& screen, const QString& button) {
    child<QAbstractButton>(screen, button).click();
}
