#include "ui/FollowFocus.h"

#include <QApplication>
#include <QScrollArea>

void followFocus(QScrollArea& area) {
    QObject::connect(qApp, &QApplication::focusChanged, &area, [&area](QWidget*, QWidget* now) {
        const bool clicked =
            QGuiApplication::mouseButtons() != Qt::NoButton; // is in view, and must not move away
        if (now && !clicked && area.widget()->isAncestorOf(now)) area.ensureWidgetVisible(now);
    });
}
