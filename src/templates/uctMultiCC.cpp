#include "templates/uctMultiCC.h"

#include "templates/GroupParts.h"
#include "ui/Cursors.h"
#include "ui/SlotGuard.h"

#include <QComboBox>
#include <QGridLayout>

uctMultiCC::uctMultiCC(const EditedReport& report, const ProjectLists::CostCentres& limits, QWidget* parent)
    : QWidget(parent), m_report(report), m_limits(limits) {
    setObjectName("frameMultiCC");
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    for (int level = 1; level <= 5; ++level) {
        auto* each = m_boxes[std::size_t(level) - 1] = new QComboBox(this);
        each->setObjectName(QString("cmbCC%1").arg(level));
        each->setMaxVisibleItems(18);
        each->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        each->setMinimumContentsLength(30);
        each->setEnabled(m_limits[std::size_t(level) - 1].isEmpty());
        if (!each->isEnabled()) each->setToolTip("Your login is restricted to this cost centre");
        auto* caption = new QLabel(QString("Level &%1").arg(level), this);
        caption->setBuddy(each);
        each->setAccessibleName(QString("Cost centre of level %1").arg(level));
        grid->addWidget(caption, level - 1, 0);
        grid->addWidget(each, level - 1, 1);
        connect(each, &QComboBox::activated, this, [this, level] { cmbCC_Click(level); });
    }
    grid->setColumnStretch(2, 1);
    grid->addWidget(groupParts::hint(this, "Each level lists the cost centres below those chosen above it."),
                    5, 0, 1, 3);
}

void uctMultiCC::setChosen(const ProjectLists::CostCentres& chosen) {
    for (int level = 1; level <= 5; ++level) {
        const std::size_t place = std::size_t(level) - 1;
        fill(level, m_limits[place].isEmpty() ? chosen[place] : m_limits[place]);
    }
}

ProjectLists::CostCentres uctMultiCC::chosen() const {
    ProjectLists::CostCentres chosen;
    for (int level = 1; level <= 5; ++level)
        chosen[std::size_t(level) - 1] = box(level)->currentData().toString();
    return chosen;
}

void uctMultiCC::BlankRemainingMulti(int level) {
    for (int deeper = level + 1; deeper <= 5; ++deeper) box(deeper)->clear();
    for (int deeper = level + 1; deeper <= 5; ++deeper) fill(deeper, m_limits[std::size_t(deeper) - 1]);
}

void uctMultiCC::fill(int level, const QString& wanted) {
    QComboBox& list = *box(level);
    const QStringList centres = m_report.lists.costCentres(level, chosen());
    list.clear();
    list.addItem(centres.isEmpty() ? "(none on this level)" : "(any)", QString());
    for (const QString& centre : centres) list.addItem(centre, centre);
    if (!wanted.isEmpty() && list.findData(wanted, Qt::UserRole, Qt::MatchFixedString) < 0)
        list.addItem(wanted, wanted);
    list.setCurrentIndex(wanted.isEmpty() ? 0 : list.findData(wanted, Qt::UserRole, Qt::MatchFixedString));
}

void uctMultiCC::cmbCC_Click(int level) {
    guarded(m_report.context, window(), "frmSelectParameters.cmbCC_Click", [&] {
        WaitCursor wait;
        BlankRemainingMulti(level);
    });
    emit changed();
}
