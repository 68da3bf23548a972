#include "parameters/uctMultiCC.h"

#include "parameters/SearchableBox.h"
#include "ui/Cursors.h"
#include "ui/Labels.h"
#include "ui/SlotGuard.h"

#include <QGridLayout>
#include <QLabel>
#include <algorithm>

uctMultiCC::uctMultiCC(const EditedReport& report, const ProjectLists::CostCentres& limits, QWidget* parent)
    : QWidget(parent), m_report(report), m_limits(limits) {
    setObjectName("frameMultiCC");
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    for (int level = 1; level <= 5; ++level) {
        auto* each = m_boxes[std::size_t(level) - 1] = new QComboBox(this);
        each->setObjectName(QString("cmbCC%1").arg(level));
        const QString words = QString("Cost centre of level %1").arg(level);
        makeSearchable(each, words);
        each->setMaxVisibleItems(18);
        each->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        each->setMinimumContentsLength(30);
        each->setEnabled(m_limits[std::size_t(level) - 1].isEmpty());
        if (!each->isEnabled()) each->setToolTip("Your login is restricted to this cost centre");
        auto* caption = new QLabel(QString("Level &%1").arg(level), this);
        caption->setBuddy(each);
        each->setAccessibleName(words);
        grid->addWidget(caption, level - 1, 0);
        grid->addWidget(each, level - 1, 1);
        connect(each, &QComboBox::activated, this, [this, level] { cmbCC_Click(level); });
        connect(each->lineEdit(), &QLineEdit::editingFinished, this, [this, level] { takeTyped(level); });
    }
    grid->setColumnStretch(2, 1);
    grid->addWidget(hintLabel(this, "Each level lists the cost centres below those chosen above it."), 5, 0,
                    1, 3);
}

void uctMultiCC::setChosen(const ProjectLists::CostCentres& chosen) {
    fillFrom(1, chosen);
}

ProjectLists::CostCentres uctMultiCC::chosen() const {
    ProjectLists::CostCentres chosen;
    for (int level = 1; level <= 5; ++level) {
        const int typed = typedEntry(level);
        chosen[std::size_t(level) - 1] =
            typed < 0 ? m_shown[std::size_t(level) - 1] : box(level)->itemData(typed).toString();
    }
    return chosen;
}

/// The entry whose name stands in the box, the first one in an emptied box; -1 while there is none of
/// that name.
int uctMultiCC::typedEntry(int level) const {
    const QComboBox& list = *box(level);
    const QString text = list.currentText();
    if (text == list.itemText(list.currentIndex())) return list.currentIndex();
    if (text.trimmed().isEmpty()) return 0;
    const int exact = list.findText(text, Qt::MatchFixedString);
    return exact >= 0 ? exact : list.findText(text.trimmed(), Qt::MatchFixedString);
}

/// What is no entry gives way to the last choice.
void uctMultiCC::takeTyped(int level) {
    const QString shown = m_shown[std::size_t(level) - 1];
    const int typed = typedEntry(level);
    choose(level, typed < 0 ? shown : box(level)->itemData(typed).toString());
    if (box(level)->currentData().toString() != shown) cmbCC_Click(level);
}

void uctMultiCC::BlankRemainingMulti(int level) {
    ProjectLists::CostCentres wanted = chosen();
    std::fill(wanted.begin() + level, wanted.end(), QString());
    fillFrom(level + 1, wanted);
}

/// All lists are read before the first box changes: a failure leaves the boxes as they were.
void uctMultiCC::fillFrom(int firstLevel, ProjectLists::CostCentres wanted) {
    for (std::size_t i = 0; i < wanted.size(); ++i)
        if (!m_limits[i].isEmpty()) wanted[i] = m_limits[i];
    std::array<QStringList, 5> centres;
    for (int level = firstLevel; level <= 5; ++level)
        centres[std::size_t(level) - 1] = m_report.lists.costCentres(level, wanted);
    for (int level = firstLevel; level <= 5; ++level)
        fill(level, centres[std::size_t(level) - 1], wanted[std::size_t(level) - 1]);
    m_shown = chosen();
}

void uctMultiCC::fill(int level, const QStringList& centres, const QString& wanted) {
    QComboBox& list = *box(level);
    list.clear();
    list.addItem(centres.isEmpty() ? "(none on this level)" : "(any)", QString());
    list.addItems(centres);
    for (int i = 0; i < centres.size(); ++i) list.setItemData(i + 1, centres[i]);
    if (!wanted.isEmpty() && list.findData(wanted, Qt::UserRole, Qt::MatchFixedString) < 0)
        list.addItem(wanted, wanted);
    choose(level, wanted);
}

void uctMultiCC::choose(int level, const QString& centre) {
    QComboBox& list = *box(level);
    list.setCurrentIndex(centre.isEmpty() ? 0 : list.findData(centre, Qt::UserRole, Qt::MatchFixedString));
}

void uctMultiCC::cmbCC_Click(int level) {
    const bool filled = guarded(
        m_report.context, window(),
        [&] {
            WaitCursor wait;
            BlankRemainingMulti(level);
        },
        {}, "frmSelectParameters.cmbCC_Click");
    if (filled)
        emit changed();
    else
        choose(level, m_shown[std::size_t(level) - 1]);
}
