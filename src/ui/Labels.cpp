#include "ui/Labels.h"

#include "ui/Palette.h"

#include <QLabel>
#include <QLineEdit>

namespace {

QLabel* wrappedLabel(QWidget* parent, const QString& text, const QColor& colour) {
    auto* label = new QLabel(text, parent);
    label->setWordWrap(true);
    setTextColour(*label, colour);
    return label;
}

} // namespace

void setTextColour(QWidget& widget, const QColor& colour) {
    QPalette colours = widget.palette();
    colours.setColor(QPalette::WindowText, colour);
    widget.setPalette(colours);
}

QLabel* hintLabel(QWidget* parent, const QString& text) {
    return wrappedLabel(parent, text, Palette::subtleText());
}

QLabel* problemLabel(QWidget* parent) {
    QLabel* label = wrappedLabel(parent, {}, Palette::problem());
    label->hide();
    return label;
}

void showProblem(QLabel* label, const QString& text) {
    label->setText(text);
    label->setVisible(!text.isEmpty());
}

void setReadOnly(QLineEdit& box, bool readOnly) {
    box.setReadOnly(readOnly);
    box.setPalette({});
    if (!readOnly) return;
    QPalette colours = box.palette();
    colours.setColor(QPalette::Base, colours.color(QPalette::Window));
    box.setPalette(colours);
}
