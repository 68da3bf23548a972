#include "ui/FollowFocus.h"

#include <QApplication>
#include <QFocusEvent>
#include <QScrollArea>

namespace {

class FollowFocus : public QObject {
public:
    explicit FollowFocus(QScrollArea& area) : QObject(&area), m_area(area) { qApp->installEventFilter(this); }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() != QEvent::FocusIn || !watched->isWidgetType()) return false;
        auto* control = static_cast<QWidget*>(watched);
        // What is clicked is in view, and must not move away.
        const bool clicked = static_cast<QFocusEvent*>(event)->reason() == Qt::MouseFocusReason;
        if (!clicked && m_area.widget()->isAncestorOf(control)) m_area.ensureWidgetVisible(control);
        return false;
    }

private:
    QScrollArea& m_area;
};

} // namespace

void followFocus(QScrollArea& area) {
    new FollowFocus(area);
}
