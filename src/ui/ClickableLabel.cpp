#include "ui/ClickableLabel.h"

#include <QAbstractButton>
#include <QMouseEvent>

ClickableLabel::ClickableLabel(const QString& text, QAbstractButton* button, QWidget* parent)
    : QLabel(text, parent), m_button(button) {
    setBuddy(button);
    setAlignment(Qt::AlignCenter);
}

void ClickableLabel::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || !rect().contains(event->position().toPoint())
        || !m_button->isEnabled())
        return;
    m_button->setFocus(Qt::MouseFocusReason); // what is being typed elsewhere is taken first
    m_button->click();
}
