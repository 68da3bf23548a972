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

QToolButton* uctFooter::add(const QString& name, const QString& caption, const QString& iconName,
                            const QString& toolTip) {
    auto* cell = new QWidget(this);
    auto* button = new QToolButton(cell);
    const int side = fontMetrics().height() * 3 / 2;
    button->setObjectName("cmd" + name);
    button->setIcon(icon(iconName));
    button->setIconSize({side, side});
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::StrongFocus);
    button->setToolTip(toolTip);
    button->setAccessibleName(QString(caption).remove('&'));
    auto* label = new ClickableLabel(caption, button, cell);
    label->setObjectName("lbl" + name);
    label->setToolTip(toolTip);

    auto* column = new QVBoxLayout(cell);
    column->setContentsMargins(side / 4, 0, side / 4, 0);
    column->setSpacing(1);
    column->addWidget(button, 0, Qt::AlignHCenter);
    column->addWidget(label);
    m_layout->addWidget(cell);
    if (name == "Save") addSaveKeys(button);
    return button;
}

void uctFooter::addSaveKeys(QToolButton* button) {
    const QKeySequence keys(QKeySequence::Save);
    button->setToolTip(button->toolTip() + " (" + keys.toString(QKeySequence::NativeText) + ')');
    connect(new QShortcut(keys, button), &QShortcut::activated, button, [this, button] {
        QWidget* const typing = window()->focusWidget();
        button->setFocus(); // what is being typed elsewhere is taken first
        if (typing) typing->setFocus();
        button->click();
    });
}

void uctFooter::addStretch() {
    m_layout->addStretch();
}

void uctFooter::setOffered(QToolButton* button, bool offered) {
    button->parentWidget()->setVisible(offered);
}

void uctFooter::setUsable(QToolButton* button, bool usable) {
    button->parentWidget()->setEnabled(usable);
}

void uctFooter::needSelection(const QList<uctListView*>& lists, const QList<QToolButton*>& buttons) {
    const auto update = [this, lists, buttons] {
        const auto selected = [&] {
            return std::ranges::any_of(
                lists, [](const uctListView* list) { return list->selectedId().has_value(); });
        };
        for (const QToolButton* button : buttons) // or the keyboard would go to some other button
            if (button->hasFocus() && !selected()) lists.first()->setFocus(Qt::TabFocusReason);
        for (QToolButton* button : buttons) setUsable(button, selected());
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
