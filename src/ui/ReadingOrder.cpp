#include "ui/ReadingOrder.h"

#include <QLayout>
#include <QSplitter>

namespace {

void raiseItems(QLayout& layout) {
    for (int i = 0; i < layout.count(); ++i) {
        if (QWidget* widget = layout.itemAt(i)->widget()) widget->raise();
        if (QLayout* inner = layout.itemAt(i)->layout()) raiseItems(*inner);
    }
}

void raisePanes(QSplitter& splitter) {
    for (int i = 0; i < splitter.count(); ++i) splitter.widget(i)->raise();
    for (int i = 0; i < splitter.count(); ++i)
        splitter.handle(i)->raise(); // wider than the gap they stand in
}

} // namespace

void putInReadingOrder(QWidget& screen) {
    QList<QWidget*> all = screen.findChildren<QWidget*>();
    all.prepend(&screen);
    for (QWidget* widget : all) {
        if (auto* splitter = qobject_cast<QSplitter*>(widget))
            raisePanes(*splitter);
        else if (widget->layout())
            raiseItems(*widget->layout());
    }
}
