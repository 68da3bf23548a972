#include "ui/PlainLabels.h"

#include <QCoreApplication>
#include <QEvent>
#include <QLabel>

namespace {

class PlainLabels : public QObject {
public:
    using QObject::QObject;

    /// Labels are polished before they show anything; the desktop's tooltip is one of them.
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() != QEvent::Polish) return false;
        auto* label = qobject_cast<QLabel*>(watched);
        if (label && label->textFormat() == Qt::AutoText) label->setTextFormat(Qt::PlainText);
        return false;
    }
};

} // namespace

void keepLabelsPlain(QCoreApplication& application) {
    application.installEventFilter(new PlainLabels(&application));
}
