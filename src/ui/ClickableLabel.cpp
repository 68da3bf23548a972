#include "ui/ClickableLabel.h"

#include <QAbstractButton>
#include <QMouseEvent>

ClickableLabel::ClickableLabel(const QString& text, QAbstractButton* button, QWidget* parent)
    : QLabel(text, parent), m_button(button) {
    setBuddy(button);
    setAlignment(Qt::AlignCenter);
}

/// At once: what a label does by itself clicks a moment later, when another screen may be open already.
bool ClickableLabel::event(QEvent* event) {
    if (event->type() != QEvent::Shortcut) return QLabel::event(event);
    m_button->setFocus(Qt::ShortcutFocusReason);
    if (!static_cast<QShortcutEvent*>(event)->isAmbiguous()) m_button->click();
    return true;
}

void ClickableLabel::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || !rect().contains(event->position().toPoint())
        || !m_button->isEnabled())
        return;
    m_button->setFocus(Qt::MouseFocusReason); // what is being typed elsewhere is taken first
    m_button->click();
}
