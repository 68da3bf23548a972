#include "ui/uctFooter.h"

#include "ui/ClickableLabel.h"
#include "ui/Icons.h"
#include "ui/Palette.h"
#include "ui/uctListView.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QShortcut>
#include <QToolButton>
#include <algorithm>

uctFooter::uctFooter(QWidget* parent) : QFrame(parent), m_layout(new QHBoxLayout(this)) {
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    const int line = fontMetrics().height();
    m_layout->setContentsMargins(line / 2, line / 3, line / 2, line / 3);
    m_layout->setSpacing(line / 4);
}

QAction* uctFooter::add(const QString& name, const QString& caption, const QString& iconName,
                        const QString& toolTip) {
    auto* action = new QAction(icon(iconName), caption, this);
    action->setObjectName("act" + name);
    auto* cell = new QWidget(this);
    auto* button = new QToolButton(cell);
    const int side = fontMetrics().height() * 3 / 2;
    button->setObjectName("cmd" + name);
    button->setDefaultAction(action);
    button->setIconSize({side, side});
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::StrongFocus);
    button->setAccessibleName(QString(caption).remove('&'));
    auto* label = new ClickableLabel(caption, button, cell);
    label->setObjectName("lbl" + name);

    auto* column = new QVBoxLayout(cell);
    column->setContentsMargins(side / 4, 0, side / 4, 0);
    column->setSpacing(1);
    column->addWidget(button, 0, Qt::AlignHCenter);
    column->addWidget(label);
    m_layout->addWidget(cell);
    m_items.insert(action, {button, toolTip, {}});
    connect(action, &QAction::changed, cell, [this, action, cell, label] {
        cell->setVisible(action->isVisible());
        cell->setEnabled(action->isEnabled());
        showToolTip(action);
        label->setToolTip(action->toolTip());
    });
    if (name == "Save") addSaveKeys(action);
    showToolTip(action);
    return action;
}

/// A shortcut of its own, not the action's: what is being typed elsewhere is taken first.
void uctFooter::addSaveKeys(QAction* action) {
    const QKeySequence keys(QKeySequence::Save);
    QToolButton* button = m_items[action].button;
    m_items[action].toolTip += " (" + keys.toString(QKeySequence::NativeText) + ')';
    connect(new QShortcut(keys, button), &QShortcut::activated, button, [this, button] {
        QWidget* const typing = window()->focusWidget();
        button->setFocus();
        if (typing) typing->setFocus();
        button->click();
    });
}

void uctFooter::showToolTip(QAction* action) {
    const Item& item = m_items[action];
    QString text = item.toolTip;
    if (!action->shortcut().isEmpty())
        text += " (" + action->shortcut().toString(QKeySequence::NativeText) + ')';
    if (!action->isEnabled() && !item.why.isEmpty()) text += '\n' + item.why;
    action->setToolTip(text);
}

void uctFooter::addStretch() {
    m_layout->addStretch();
}

void uctFooter::setUsable(QAction* action, bool usable, const QString& why) {
    m_items[action].why = why;
    action->setEnabled(usable);
    showToolTip(action);
}

void uctFooter::needSelection(const QList<uctListView*>& lists, const QList<QAction*>& actions) {
    const auto update = [this, lists, actions] {
        const bool selected = std::ranges::any_of(
            lists, [](const uctListView* list) { return list->selectedId().has_value(); });
        for (QAction* action : actions) // or the keyboard would go to some other button
            if (m_items[action].button->hasFocus() && !selected) lists.first()->setFocus(Qt::TabFocusReason);
        for (QAction* action : actions) setUsable(action, selected, "Nothing is selected.");
    };
    for (const uctListView* list : lists) connect(list, &uctListView::selectedIdChanged, this, update);
    update();
}

void uctFooter::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Button));
    painter.setPen(Palette::frameLine());
    painter.drawLine(rect().topLeft(), rect().topRight());
}
