#include "ui/uctFilterBox.h"

#include "ui/ListHabits.h"

#include <QAbstractItemView>
#include <QKeyEvent>
#include <QShortcut>

uctFilterBox::uctFilterBox(QWidget* parent) : QLineEdit(parent) {
    setClearButtonEnabled(true);
    auto* find = new QShortcut(QKeySequence::Find, this);
    connect(find, &QShortcut::activated, this, &uctFilterBox::find);
    connect(find, &QShortcut::activatedAmbiguously, this, &uctFilterBox::find);
}

void uctFilterBox::attach(QAbstractItemView& list) {
    m_list = &list;
    setTabOrder(list.previousInFocusChain(), this);
    setToolTip((toolTip() + " (" + QKeySequence(QKeySequence::Find).toString(QKeySequence::NativeText) + ')')
                   .trimmed());
}

void uctFilterBox::goToList() {
    selectCurrentRow(*m_list);
    m_list->setFocus();
}

void uctFilterBox::find() {
    uctFilterBox* wanted = this;
    for (uctFilterBox* each : window()->findChildren<uctFilterBox*>())
        if (each->m_list && each->m_list->hasFocus()) wanted = each;
    wanted->setFocus(Qt::ShortcutFocusReason);
    wanted->selectAll();
}

void uctFilterBox::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && !text().isEmpty())
        clear();
    else if (event->key() == Qt::Key_Down && m_list)
        goToList();
    else
        QLineEdit::keyPressEvent(event);
}
