#include "templates/frmSelectReports.h"

#include "base/Session.h"
#include "reports/Catalogue.h"
#include "reports/ReportTypes.h"
#include "ui/ListHabits.h"
#include "ui/Messages.h"
#include "ui/WindowSize.h"
#include "ui_frmSelectReports.h"

#include <QKeyEvent>

namespace {

QString kindsOfLine(const CatalogueEntry& entry) {
    QStringList kinds;
    if (entry.runsFor('L')) kinds << "lines";
    if (entry.runsFor('M')) kinds << "mobiles";
    if (entry.runsFor('V')) kinds << "voice only";
    if (entry.runsFor('D')) kinds << "data only";
    return kinds.join(", ");
}

QString outputs(const CatalogueEntry& entry) {
    QStringList outputs;
    if (entry.allowsOutput('E')) outputs << "Excel";
    if (entry.allowsOutput('C')) outputs << "CSV";
    return outputs.join(", ");
}

QString description(const CatalogueEntry& entry, int reportType) {
    QStringList lines = parameterGroupTexts(entry, reportType);
    if (lines.isEmpty()) lines << "This report has no parameters.";
    if (!entry.lines.empty()) lines << "Calls from: " + kindsOfLine(entry);
    lines << "Outputs: " + outputs(entry);
    return "<h3>" + entry.titleText().toHtmlEscaped() + "</h3><p style='line-height:150%'>"
           + lines.join("<br>") + "</p>";
}

} // namespace

frmSelectReports::frmSelectReports(ScreenContext& context, QWidget* parent)
    : ScreenDialog(context, parent), m_ui(std::make_unique<Ui::frmSelectReports>()) {
    m_ui->setupUi(this);
    m_ui->lstReports->setColumns({{"Report"}}, "SelectReports");
    m_ui->lblDescription->document()->setDocumentMargin(10);
    uctFooter& footer = *m_ui->footer;
    footer.addStretch();
    QAction* cmdSelect = footer.add("Select", "&Select", "dialog-ok-apply", "Use the selected report", this,
                                    &frmSelectReports::cmdSelect_Click);
    footer.needSelection({m_ui->lstReports}, {cmdSelect});
    m_ui->lstReports->offer({cmdSelect}, cmdSelect);
    footer.add("Cancel", "&Cancel", "dialog-cancel", "Close without choosing a report", this,
               &frmSelectReports::reject);
    m_ui->txtFilter->attach(*m_ui->lstReports);
    connect(m_ui->txtFilter, &QLineEdit::textChanged, this, &frmSelectReports::txtFilter_Change);
    connect(m_ui->txtFilter, &QLineEdit::returnPressed, this, &frmSelectReports::cmdSelect_Click);
    connect(m_ui->lstReports, &uctListView::rowActivated, this, &frmSelectReports::cmdSelect_Click);
    connect(m_ui->lstReports, &uctListView::selectedIdChanged, this, &frmSelectReports::lstReports_ItemClick);
    m_ui->txtFilter->installEventFilter(this);
    const int letter = fontMetrics().averageCharWidth();
    m_ui->splitter->setSizes({letter * 62, letter * 52});
    m_ui->splitter->remember("SelectReports");
    resizeToText(*this, 120, 32);
}

frmSelectReports::~frmSelectReports() = default;

int frmSelectReports::Setup(int reportType, int reportSubType) {
    m_reportType = reportType;
    const CurrentProject& project = session().project;
    std::vector<ListRow> rows;
    for (const CatalogueEntry* entry : catalogueEntries(
             reportType, ListChoice::forProject(reportType, project.reportedBillType(), project.wispera)))
        rows.push_back({entry->id, {entry->titleText()}});
    if (rows.empty()) return -1;
    const int first = rows.front().id;
    m_ui->lstReports->setRows(std::move(rows));
    if (!m_ui->lstReports->selectId(reportSubType)) m_ui->lstReports->selectId(first);
    m_ui->header->setNote(reportTypeName(reportType));
    m_ui->txtFilter->setFocus();
    return 0;
}

const CatalogueEntry* frmSelectReports::selectedEntry() const {
    const std::optional<int> id = m_ui->lstReports->selectedId();
    const CurrentProject& project = session().project;
    return id ? catalogueEntry(
               m_reportType, *id,
               ListChoice::forProject(m_reportType, project.reportedBillType(), project.wispera))
              : nullptr;
}

void frmSelectReports::lstReports_ItemClick() {
    const CatalogueEntry* entry = selectedEntry();
    m_ui->lblDescription->setHtml(entry ? description(*entry, m_reportType) : QString());
}

void frmSelectReports::txtFilter_Change(const QString& words) {
    m_ui->lstReports->setFilterWords(words);
    selectCurrentRow(*m_ui->lstReports);
}

/// The arrow keys walk the list while the words are typed.
bool frmSelectReports::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Up || key == Qt::Key_Down || key == Qt::Key_PageUp || key == Qt::Key_PageDown)
            return QCoreApplication::sendEvent(m_ui->lstReports, event);
    }
    return ScreenDialog::eventFilter(watched, event);
}

void frmSelectReports::cmdSelect_Click() {
    m_chosen = selectedEntry();
    if (m_chosen)
        callBackAndClose();
    else
        messages().notice(this, "You must select a report in the list.");
}
