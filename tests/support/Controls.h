#pragma once

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QCoreApplication>
#include <QWheelEvent>
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

/// The texts of a list as shown, one for each row.
inline QStringList texts(const QAbstractItemView& list, int column = 0) {
    QStringList texts;
    for (int i = 0; i < list.model()->rowCount(); ++i)
        texts << list.model()->index(i, column).data().toString();
    return texts;
}

inline void turnWheel(QWidget& box) {
    QWheelEvent wheel(QPointF(5, 5), box.mapToGlobal(QPointF(5, 5)), {}, {0, -120}, Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&box, &wheel);
}
