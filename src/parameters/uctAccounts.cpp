#include "parameters/uctAccounts.h"

#include "db/ServerText.h"
#include "parameters/CostCentreLimits.h"
#include "parameters/uctMultiCC.h"
#include "reports/AccountFilter.h"
#include "reports/clsReports_Collection.h"
#include "ui/Cursors.h"
#include "ui/Labels.h"
#include "ui/SlotGuard.h"
#include "ui/uctCheckList.h"

#include <QButtonGroup>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QRadioButton>
#include <QSet>
#include <QStackedWidget>

namespace {

bool isOneLevel(int filter) {
    return filter >= CostCentreLevel1 && filter <= CostCentreLevel5;
}

int levelOf(int filter) {
    return filter - CostCentreLevel1 + 1;
}

} // namespace

uctAccounts::uctAccounts(const EditedReport& report, QWidget* parent)
    : uctParameterGroup(report, parent),
      m_limits(costCentreLimits(report.context.session)),
      m_optSelect(new QButtonGroup(this)),
      m_details(new QStackedWidget(this)),
      m_nothing(new QWidget(this)),
      m_list(new uctCheckList(this)),
      m_lines(new uctCheckList(this)),
      m_multi(new uctMultiCC(report, m_limits, this)),
      m_hint(hintLabel(this)) {
    auto* column = new QVBoxLayout(this);
    auto* options = new QGridLayout;
    column->addLayout(options);
    const int type = report.report.ReportType();
    addOption(AllAccounts, "All &Accounts", 0, 0);
    addOption(OneServiceNumber, type == MobileReport ? "Selected Han&dset" : "Selected Service N&o", 0, 1);
    if (type == CallReport && reportAcceptsRestrictedSelection(report.report.ReportSubType()))
        addOption(RestrictedSelection, "Selected &Lines", 0, 2);
    for (int level = 1; level <= 5; ++level)
        addOption(CostCentreLevel1 + level - 1, QString("Cost Centre %1").arg(level), 1 + level / 4,
                  (level - 1) % 3);
    addOption(SeveralCostCentreLevels, "&Multi Level Cost Centres", 2, 2);
    for (int i = 0; i < options->columnCount(); ++i) options->setColumnStretch(i, 1);

    m_list->setObjectName("lstAccounts");
    m_lines->setObjectName("cmbLineSelection");
    m_lines->setEmptyText("This project holds no calls made from fixed lines.");
    for (QWidget* page : {m_nothing, static_cast<QWidget*>(m_list), static_cast<QWidget*>(m_lines),
                          static_cast<QWidget*>(m_multi)})
        m_details->addWidget(page);
    column->addWidget(m_details);
    column->addWidget(m_hint);
    if (type == BillingReport) {
        m_summaryLevel = new QComboBox(this);
        m_summaryLevel->setObjectName("cmbSummaryLevel");
        for (int level = 1; level <= 5; ++level)
            m_summaryLevel->addItem(QString("Level %1").arg(level), level);
        auto* caption = new QLabel("S&ummarise by cost centres of", this);
        caption->setBuddy(m_summaryLevel);
        m_summaryLevel->setAccessibleName("Summarise by cost centres of");
        auto* row = new QHBoxLayout;
        row->addWidget(caption);
        row->addWidget(m_summaryLevel);
        row->addStretch();
        column->addLayout(row);
        connect(m_summaryLevel, &QComboBox::currentIndexChanged, this, &uctAccounts::edited);
    }

    connect(m_optSelect, &QButtonGroup::idClicked, this, &uctAccounts::OptSelect_Click);
    connect(m_list, &uctCheckList::changed, this, &uctAccounts::edited);
    connect(m_lines, &uctCheckList::changed, this, &uctAccounts::edited);
    connect(m_multi, &uctMultiCC::changed, this, &uctAccounts::edited);
}

void uctAccounts::addOption(int filter, const QString& caption, int row, int column) {
    auto* option = new QRadioButton(caption, this);
    option->setObjectName(QString("OptSelect%1").arg(filter));
    option->setEnabled(isAllowed(filter));
    if (!option->isEnabled()) option->setToolTip("Your login is restricted to some cost centres");
    m_optSelect->addButton(option, filter);
    static_cast<QGridLayout*>(layout()->itemAt(0)->layout())->addWidget(option, row, column);
}

/// A restricted user may not choose what takes in other people's numbers: the name of a cost centre
/// alone may occur below others as well.
bool uctAccounts::isAllowed(int filter) const {
    if (!isLimited(m_limits)) return true;
    if (filter == AllAccounts) return false;
    if (!isOneLevel(filter)) return true;
    ProjectLists::CostCentres others = m_limits;
    others[std::size_t(levelOf(filter)) - 1].clear();
    return !isLimited(others);
}

void uctAccounts::load(const clsReportParameters& parameters) {
    m_ticked.clear();
    m_shown = -1;
    int filter = parameters.AccountFilter();
    // A selection that is not offered stays as it is, but for a user who must not see all of it.
    const auto* option = m_optSelect->button(filter);
    if (option ? !option->isEnabled() : isLimited(m_limits)) filter = SeveralCostCentreLevels;
    m_ticked[OneServiceNumber] = parameters.ServiceNumber().split('|', Qt::SkipEmptyParts);
    m_ticked[RestrictedSelection] = parameters.LineSelection().split('|', Qt::SkipEmptyParts);
    ProjectLists::CostCentres chosen;
    for (int level = 1; level <= 5; ++level) {
        const QString& centre = parameters.CostCentre(level);
        m_ticked[CostCentreLevel1 + level - 1] = centre.split('|', Qt::SkipEmptyParts);
        if (filter == SeveralCostCentreLevels) chosen[std::size_t(level) - 1] = centre;
    }
    m_multi->setChosen(chosen);
    check(filter);
    show(filter);
    if (m_summaryLevel)
        m_summaryLevel->setCurrentIndex(qBound(1, int(parameters.CostCentreSummarySelectionLevel()), 5) - 1);
}

void uctAccounts::store(clsReportParameters& parameters) const {
    if (m_summaryLevel)
        parameters.setCostCentreSummarySelectionLevel(qint16(m_summaryLevel->currentData().toInt()));
    if (!m_optSelect->checkedButton()) return;
    const int filter = m_optSelect->checkedId();
    parameters.setAccountFilter(filter);
    parameters.setServiceNumber(filter == OneServiceNumber ? m_list->tickedKeys().join('|') : QString());
    ProjectLists::CostCentres chosen;
    if (filter == SeveralCostCentreLevels) chosen = m_multi->chosen();
    if (isOneLevel(filter)) chosen[std::size_t(levelOf(filter)) - 1] = m_list->tickedKeys().join('|');
    for (int level = 1; level <= 5; ++level) parameters.setCostCentre(level, chosen[std::size_t(level) - 1]);
    if (m_optSelect->button(RestrictedSelection))
        parameters.setLineSelection(filter == RestrictedSelection ? m_lines->tickedKeys().join('|')
                                                                  : QString());
}

void uctAccounts::OptSelect_Click(int filter) {
    const bool shown = guarded(
        editedReport().context, window(),
        [&] {
            WaitCursor wait;
            show(filter);
        },
        {}, "frmSelectParameters.OptSelect_Click");
    if (shown)
        edited();
    else
        check(m_shown);
}

/// Checks no option for a filter that is not offered.
void uctAccounts::check(int filter) {
    if (auto* option = m_optSelect->button(filter)) {
        option->setChecked(true);
    } else if (auto* checked = m_optSelect->checkedButton()) {
        m_optSelect->setExclusive(false);
        checked->setChecked(false);
        m_optSelect->setExclusive(true);
    }
}

void uctAccounts::show(int filter) {
    if (m_shown == OneServiceNumber || isOneLevel(m_shown)) m_ticked[m_shown] = m_list->tickedKeys();
    if (m_shown == RestrictedSelection) m_ticked[m_shown] = m_lines->tickedKeys();
    const bool listed = filter == OneServiceNumber || isOneLevel(filter);
    if (listed) fillList(filter);
    if (filter == RestrictedSelection) fillLines();
    m_shown = filter;
    QWidget* page = m_nothing;
    if (listed) page = m_list;
    if (filter == RestrictedSelection) page = m_lines;
    if (filter == SeveralCostCentreLevels) page = m_multi;
    m_details->setCurrentWidget(page);
    // The stack is as high as its highest page otherwise, and nothing is shown for all accounts.
    m_details->setVisible(page != m_nothing);
    const bool offered = m_optSelect->button(filter);
    m_hint->setText(offered ? "Each entry ticked makes a report of its own."
                            : "The report keeps its present selection, which is not offered here, "
                              "until another one is chosen.");
    m_hint->setVisible(listed || !offered);
}

void uctAccounts::fillList(int filter) {
    QStringList ticked = m_ticked.value(filter);
    if (isLimited(m_limits)) ticked = filter == OneServiceNumber ? withinLimits(ticked) : QStringList();
    QStringList values = valuesOf(filter);
    // A bar parts the values of several reports, so no single value may hold one.
    values.removeIf([](const QString& value) { return value.contains('|'); });
    m_list->setEmptyText(emptyText(filter));
    m_list->setTexts(values, isLimited(m_limits) && isOneLevel(filter) ? values : ticked);
}

void uctAccounts::fillLines() {
    std::vector<CheckListEntry> entries;
    QSet<QString> known;
    const QStringList ticked = withinLimits(m_ticked.value(RestrictedSelection));
    QHash<QString, QStringList> extensions;
    QStringList numbers;
    for (const ProjectLine& line : editedReport().lists.lines()) {
        numbers << line.number;
        extensions.insert(line.number, line.extensions);
    }
    for (const QString& number : withinLimits(numbers)) {
        const QStringList of = extensions.value(number);
        entries.push_back({number, {of.isEmpty() ? number : number + "   extension " + of.join(", ")}});
        known.insert(serverKey(number));
    }
    for (const QString& number : ticked)
        if (!known.contains(serverKey(number))) {
            known.insert(serverKey(number));
            entries.insert(entries.begin(), {number, {number + "   (not in this project)"}});
        }
    m_lines->setEntries(std::move(entries), ticked);
}

QStringList uctAccounts::valuesOf(int filter) {
    const ProjectLists& lists = editedReport().lists;
    if (isOneLevel(filter)) {
        const QString& limit = m_limits[std::size_t(levelOf(filter)) - 1];
        return limit.isEmpty() ? lists.costCentres(levelOf(filter), {}) : QStringList{limit};
    }
    switch (editedReport().report.ReportType()) {
    case MobileReport:
        return withinLimits(lists.handsets());
    case CircuitReport:
        return withinLimits(lists.circuits());
    default:
        return lists.serviceNumbers(m_limits);
    }
}

QString uctAccounts::emptyText(int filter) const {
    if (isOneLevel(filter))
        return QString("This project holds no cost centres on level %1.").arg(levelOf(filter));
    switch (editedReport().report.ReportType()) {
    case MobileReport:
        return "This project holds no calls made from handsets.";
    case CircuitReport:
        return "This project holds no list of circuits.";
    default:
        return "This project holds no service numbers.";
    }
}

QStringList uctAccounts::withinLimits(const QStringList& numbers) const {
    if (!isLimited(m_limits)) return numbers;
    const QStringList own = editedReport().lists.serviceNumbers(m_limits);
    QSet<QString> allowed;
    for (const QString& number : own) allowed.insert(serverKey(number));
    QStringList within;
    for (const QString& number : numbers)
        if (allowed.contains(serverKey(number))) within << number;
    return within;
}
