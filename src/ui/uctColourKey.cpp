#include "ui/uctColourKey.h"

#include "ui/Palette.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>

uctColourKey::uctColourKey(const QString& title, QWidget* parent) : QWidget(parent) {
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(new QLabel(title, this));
}

void uctColourKey::add(const QString& labelName, const QString& words, const QColor& colour) {
    const int side = fontMetrics().ascent();
    QPixmap swatch(side, side);
    swatch.fill(colour);
    QPainter painter(&swatch);
    painter.setPen(Palette::frameLine().darker(120));
    painter.drawRect(0, 0, side - 1, side - 1);
    painter.end();
    auto* square = new QLabel(this);
    square->setPixmap(swatch);
    auto* label = new QLabel(words, this);
    label->setObjectName(labelName);
    layout()->addWidget(square);
    layout()->addWidget(label);
}
