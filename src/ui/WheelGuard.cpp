#include "ui/WheelGuard.h"

#include <QAbstractSpinBox>
#include <QComboBox>
#include <QEvent>

namespace {

class WheelGuard : public QObject {
public:
    using QObject::QObject;

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() != QEvent::Wheel || static_cast<QWidget*>(watched)->hasFocus()) return false;
        event->ignore();
        return true;
    }
};

} // namespace

void guardFromWheel(QWidget& widget) {
    auto* guard = new WheelGuard(&widget);
    for (QWidget* box : widget.findChildren<QWidget*>()) {
        if (!qobject_cast<QComboBox*>(box) && !qobject_cast<QAbstractSpinBox*>(box)) continue;
        box->setFocusPolicy(Qt::StrongFocus);
        box->installEventFilter(guard);
    }
}
