#include "parameters/frmSelectParameters.h"

#include "base/Session.h"
#include "numbers/frmRangeSel.h"
#include "parameters/ParameterChecks.h"
#include "parameters/uctAccounts.h"
#include "parameters/uctBillNumber.h"
#include "parameters/uctCallClasses.h"
#include "parameters/uctDates.h"
#include "parameters/uctDistance.h"
#include "parameters/uctExclusions.h"
#include "parameters/uctLineChoice.h"
#include "parameters/uctNumbers.h"
#include "parameters/uctTextChoice.h"
#include "parameters/uctThresholds.h"
#include "parameters/uctTimes.h"
#include "reports/CallTagging.h"
#include "ui/Cursors.h"
#include "ui/FollowFocus.h"
#include "ui/Labels.h"
#include "ui/Messages.h"
#include "ui/SlotGuard.h"
#include "ui/WheelGuard.h"
#include "ui/WindowSize.h"
#include "ui/uctFrameHeader.h"
#include "ui_frmSelectParameters.h"

#include <QScrollBar>

frmSelectParameters::frmSelectParameters(ScreenContext& context, QWidget* parent)
    : ScreenDialog(context, parent),
      m_ui(std::make_unique<Ui::frmSelectParameters>()),
      m_lists(context.session.db(), context.session.project) {
    m_ui->setupUi(this);
    connect(m_ui->scrGroups->verticalScrollBar(), &QScrollBar::valueChanged, this,
            &frmSelectParameters::followScrolling);

    const int letter = fontMetrics().averageCharWidth();
    m_ui->lstGroups->setMinimumWidth(letter * 22);
    m_ui->splitter->setSizes({letter * 24, letter * 100});
    m_ui->splitter->setStretchFactor(1, 1);
    m_ui->splitter->remember("SelectParameters");
    connect(m_ui->lstGroups, &QListWidget::currentRowChanged, this, [this](int row) { goTo(row, false); });
    connect(m_ui->lstGroups, &QListWidget::itemActivated, this,
            [this](QListWidgetItem* item) { goTo(m_ui->lstGroups->row(item), true); });
    followFocus(*m_ui->scrGroups);
    resizeToText(*this, 135, 36);
}

frmSelectParameters::~frmSelectParameters() = default;

void frmSelectParameters::buildFooter() {
    uctFooter& footer = *m_ui->footer;
    const auto button = [&](const char* name, const char* caption, const char* icon, const char* toolTip,
                            auto slot) { return footer.add(name, caption, icon, toolTip, this, slot); };
    QAction* caption = button("ReportCaption", "Ca&ption", "draw-text", "Enter the caption of the report",
                              &frmSelectParameters::cmdReportCaption_Click);
    QAction* header = button("ReportHeader", "H&eader", "format-text-bold", "Enter the header of the report",
                             &frmSelectParameters::cmdReportHeader_Click);
    for (QLabel* shown : {m_ui->lblCaptionWord, m_ui->lblReportCaption})
        onClick(*shown, [caption] { caption->trigger(); });
    for (QLabel* shown : {m_ui->lblHeaderWord, m_ui->lblReportHeader})
        onClick(*shown, [header] { header->trigger(); });
    footer.addStretch();
    button("Save", "&Save", "document-save", "Use these parameters for the report",
           &frmSelectParameters::cmdSave_Click);
    button("Cancel", "Ca&ncel", "dialog-cancel", "Close and keep the former parameters",
           &frmSelectParameters::reject);
}

int frmSelectParameters::Setup(clsReport& report, int templateId) {
    return load([&] {
        WaitCursor wait;
        m_report = &report;
        m_entry = report.Entry();
        m_working = report.Parameters()->Clone();
        m_ui->header->setNote(m_entry ? m_entry->titleText() : report.GetReportTitle());
        if (m_entry) buildGroups({context(), report, *m_entry, m_lists, templateId});
        m_ui->lblNoGroups->setVisible(m_groups.empty());
        m_ui->splitter->widget(0)->setHidden(m_groups.empty());
        static_cast<QVBoxLayout*>(m_ui->groups->layout())->addStretch();
        buildFooter(); // after the groups, which the Tab key reaches before
        RefreshParams();
        m_ui->lstGroups->setCurrentRow(0);
    })
               ? 0
               : -1;
}

template <class GroupWidget, class... Arguments>
GroupWidget* frmSelectParameters::add(const QString& name, const QString& title,
                                      const Arguments&... arguments) {
    auto* frame = new QFrame(m_ui->groups);
    frame->setObjectName(name);
    auto* header = new uctFrameHeader(frame);
    header->setTitle(title);
    auto* group = new GroupWidget(arguments..., frame);
    header->attach(group, "Parameters/" + name);
    auto* column = new QVBoxLayout(frame);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(2);
    column->addWidget(header);
    column->addWidget(group);
    m_ui->groups->layout()->addWidget(frame);
    announce(group, frame, title);
    return group;
}

void frmSelectParameters::buildGroups(const EditedReport& report) {
    const CatalogueEntry& entry = report.entry;
    if (uctNumbers::isFor(report.report)) {
        auto* numbers = add<uctNumbers>("FrameNumbers", "Telephone numbers", report);
        connect(numbers, &uctNumbers::editRequested, this, &frmSelectParameters::cmdCalls_Click);
    }
    if (entry.offers(CallDatesGroup)) add<uctDates>("FrameDates", "Call dates and days", report);
    if (entry.offers(CallHoursGroup)) add<uctTimes>("FrameTimes", "Call hours", report);
    buildLineGroups(report);
    if (entry.offers(ThresholdsGroup)) add<uctThresholds>("FrameThresholds", "Thresholds", report);
    if (entry.offers(AccountsGroup)) add<uctAccounts>("FrameCC", "Accounts and cost centres", report);
    buildChoiceGroups(report);
    if (entry.offers(ExclusionsGroup)) add<uctExclusions>("frameExclusions", "Excluded numbers", report);
    const bool classes = report.report.ReportType() == CallReport && entry.offers(CallClassesGroup);
    if (classes && m_lists.hasUnclassedCalls())
        add<uctCallClasses>("FrameCallClasses", "Call classes", report);
}

/// The kinds of line decide which distance bands there are. The choice of lines is stored first,
/// because storing another one unselects every band.
void frmSelectParameters::buildLineGroups(const EditedReport& report) {
    uctLineChoice* lines = nullptr;
    if (!report.entry.lines.empty()) lines = add<uctLineChoice>("FrameMob", "Calls from", report);
    if (report.report.ReportType() == CircuitReport || !report.entry.offers(DistanceBandsGroup)) return;
    auto* bands = add<uctDistance>("FrameDistance", "Distance bands", report);
    if (lines) connect(lines, &uctLineChoice::callFilterChanged, bands, &uctDistance::tickSuiting);
}

void frmSelectParameters::buildChoiceGroups(const EditedReport& report) {
    const CatalogueEntry& entry = report.entry;
    const bool circuits = report.report.ReportType() == CircuitReport;
    if (entry.offers(BillNumberGroup)) add<uctBillNumber>("FrameLinkvale", "Bill number", report);
    if (entry.offers(circuits ? PercentageGroup : CircuitIdGroup))
        add<uctTextChoice>("FrameCircuits", "Comparison", report, percentageField());
    if (circuits && entry.offers(CircuitIdGroup))
        add<uctTextChoice>("FrameSelectedCircuit", "Selected circuit", report, circuitField(m_lists));
    if (entry.offers(SourceBillGroup))
        m_sourceBill =
            add<uctTextChoice>("frameSourceBill", "Source bill reference", report, sourceBillField(m_lists));
    if (entry.offers(WisperaUserGroup))
        add<uctTextChoice>("FrameWPParams", "Wispera user", report, wisperaUserField(m_lists));
    if (isTaggedCallReport(report.report.ReportSubType()))
        add<uctTextChoice>("FrameCallTagging", "Tagged calls", report, callTaggingField());
}

void frmSelectParameters::announce(uctParameterGroup* group, QWidget* frame, const QString& title) {
    guardFromWheel(*group);
    auto* item = new QListWidgetItem(title, m_ui->lstGroups);
    m_groups.push_back({group, frame, item});
    connect(group, &uctParameterGroup::changed, this, [this, item, title] {
        m_changed = true;
        item->setText(title + "  *");
        QFont font = item->font();
        font.setBold(true);
        item->setFont(font);
    });
}

void frmSelectParameters::goTo(int group, bool focus) {
    if (group < 0) return;
    const Group& wanted = m_groups[std::size_t(group)];
    wanted.frame->findChild<uctFrameHeader*>()->setOpen(true);
    m_ui->groups->layout()->activate();
    {
        // The last groups cannot come to the top; the one that was asked for stays marked.
        const QSignalBlocker quiet(m_ui->lstGroups);
        m_ui->scrGroups->verticalScrollBar()->setValue(wanted.frame->y());
        m_ui->lstGroups->setCurrentRow(group);
    }
    if (!focus) return;
    for (QWidget* next = wanted.widget->nextInFocusChain(); wanted.widget->isAncestorOf(next);
         next = next->nextInFocusChain()) {
        if (!next->isEnabled() || !next->isVisible() || !(next->focusPolicy() & Qt::TabFocus)) continue;
        next->setFocus(Qt::TabFocusReason);
        return;
    }
}

void frmSelectParameters::followScrolling() {
    const int top = m_ui->scrGroups->verticalScrollBar()->value();
    int row = 0;
    for (std::size_t i = 0; i < m_groups.size(); ++i)
        if (m_groups[i].frame->y() <= top + fontMetrics().height()) row = int(i);
    const QSignalBlocker quiet(m_ui->lstGroups);
    m_ui->lstGroups->setCurrentRow(row);
}

void frmSelectParameters::RefreshParams() {
    uctDistance* bands = nullptr;
    uctLineChoice* lines = nullptr;
    for (const Group& group : m_groups) {
        group.widget->refresh(*m_working);
        if (auto* found = qobject_cast<uctDistance*>(group.widget)) bands = found;
        if (auto* found = qobject_cast<uctLineChoice*>(group.widget)) lines = found;
    }
    // A report is not made for every kind of line, and then starts with another one than it holds.
    if (bands && lines && lines->callFilter() != m_working->CallFilter()) bands->narrow(lines->callFilter());
    showTexts();
}

void frmSelectParameters::showTexts() {
    const auto shown = [](const QString& text) { return text.isEmpty() ? QString("(none)") : text; };
    m_ui->lblReportCaption->setText(shown(m_working->ReportCaption()));
    m_ui->lblReportHeader->setText(shown(m_working->ReportHeader()));
}

void frmSelectParameters::cmdSave_Click() {
    run([this] { save(); });
}

void frmSelectParameters::save() {
    for (const Group& group : m_groups) group.widget->store(*m_working);
    const QStringList sourceBills = m_sourceBill ? m_sourceBill->choices() : QStringList();
    if (const auto fault = parameterChecks::firstFault(*m_report, m_entry, *m_working, sourceBills)) {
        messages().notice(this, fault->text, fault->information ? Messages::Information : Messages::Plain);
        goToFault();
        return;
    }
    clsReport edited = *m_report;
    edited.setParameters(m_working);
    parameterChecks::requireTextsFit(edited);
    *m_report = edited;
    callBackAndClose();
}

/// The groups stand in the order in which they are checked.
void frmSelectParameters::goToFault() {
    for (std::size_t i = 0; i < m_groups.size(); ++i) {
        QWidget* box = m_groups[i].widget->boxAtFault();
        if (!box) continue;
        goTo(int(i), false);
        box->setFocus();
        return;
    }
}

std::optional<QString> frmSelectParameters::askText(const QString& prompt, QString text,
                                                    QString (*fault)(const QString&)) {
    while (const auto answer = messages().input(this, prompt, text)) {
        const QString problem = fault(*answer);
        if (problem.isEmpty()) return answer;
        messages().notice(this, problem);
        text = *answer;
    }
    return {};
}

void frmSelectParameters::cmdReportCaption_Click() {
    const auto caption = askText("Please enter a report caption (max 50 characters)",
                                 m_working->ReportCaption(), parameterChecks::captionFault);
    if (!caption) return;
    m_working->setReportCaption(*caption);
    m_changed = true;
    showTexts();
}

void frmSelectParameters::cmdReportHeader_Click() {
    const auto header = askText("Please enter a report header (max 200 characters)",
                                m_working->ReportHeader(), parameterChecks::headerFault);
    if (!header) return;
    m_working->setReportHeader(*header);
    m_changed = true;
    showTexts();
}

void frmSelectParameters::cmdCalls_Click() {
    run([this] {
        switch (m_report->ReportSubType()) {
        case CallsToNumberReport:
            editNumbers("Calls to", "CalledBackCallsTo");
            break;
        case CallsFromNumberReport:
            editNumbers("Calls from", "CalledBackCallsFrom");
            break;
        default:
            editNumbers("Calls not to", "CalledBackCallsNotTo");
        }
    });
}

void frmSelectParameters::editNumbers(const QString& title, const QString& routine) {
    m_rangeSel = std::make_unique<frmRangeSel>(context(), this);
    if (m_rangeSel->SetupNumbers(numbersOf(*m_report, *m_working), title) != 0) return;
    m_rangeSel->SetCallback(this, routine);
    m_rangeSel->exec();
    m_rangeSel.reset();
    m_groups.front().widget->refresh(*m_working);
}

void frmSelectParameters::CalledBackCallsTo() {
    m_working->setCallsToNumber(m_rangeSel->numbers());
    emit m_groups.front().widget->changed();
}

void frmSelectParameters::CalledBackCallsFrom() {
    m_working->setCallsFromNumber(m_rangeSel->numbers());
    emit m_groups.front().widget->changed();
}

void frmSelectParameters::CalledBackCallsNotTo() {
    m_working->setCallsNotToNumber(m_rangeSel->numbers());
    emit m_groups.front().widget->changed();
}

bool frmSelectParameters::mayClose() {
    return !m_changed || messages().ask(this, "Are you sure you want to cancel your changes?");
}
