#include "ui/Labels.h"

#include "ui/Palette.h"

#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>

namespace {

QLabel* wrappedLabel(QWidget* parent, const QString& text, const QColor& colour) {
    auto* label = new QLabel(text, parent);
    label->setWordWrap(true);
    setTextColour(*label, colour);
    return label;
}

class ClickFilter : public QObject {
public:
    ClickFilter(QLabel& label, std::function<void()> act) : QObject(&label), m_act(std::move(act)) {
        label.installEventFilter(this);
    }
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() != QEvent::MouseButtonRelease) return false;
        if (static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton) m_act();
        return true;
    }

private:
    std::function<void()> m_act;
};

} // namespace

void onClick(QLabel& label, const std::function<void()>& act) {
    label.setCursor(Qt::PointingHandCursor);
    new ClickFilter(label, act);
}

void setTextColour(QWidget& widget, const QColor& colour) {
    QPalette colours = widget.palette();
    colours.setColor(QPalette::WindowText, colour);
    widget.setPalette(colours);
}

QLabel* hintLabel(QWidget* parent, const QString& text) {
    return wrappedLabel(parent, text, Palette::subtleText());
}

QLabel* subtleLabel(const QString& name, const QString& text, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    label->setObjectName(name);
    setTextColour(*label, Palette::subtleText());
    return label;
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
