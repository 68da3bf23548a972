#include "templates/frmReport.h"

#include "base/MailOptions.h"
#include "base/Session.h"
#include "parameters/ParameterChecks.h"
#include "parameters/ParameterRows.h"
#include "parameters/frmBillSelection.h"
#include "parameters/frmSelectParameters.h"
#include "projects/modProjects.h"
#include "reports/ReportFanOut.h"
#include "reports/ReportTypes.h"
#include "templates/NewReport.h"
#include "templates/frmSelectReports.h"
#include "ui/Cursors.h"
#include "ui/FollowFocus.h"
#include "ui/Labels.h"
#include "ui/Messages.h"
#include "ui/Palette.h"
#include "ui/SlotGuard.h"
#include "ui/WheelGuard.h"
#include "ui/WindowSize.h"
#include "ui/openScreen.h"
#include "ui_frmReport.h"

#include <QHeaderView>
#include <QScopedValueRollback>
#include <algorithm>

frmReport::frmReport(ScreenContext& context, QWidget* parent)
    : ScreenDialog(context, parent), m_ui(std::make_unique<Ui::frmReport>()), m_report(session().project) {
    m_ui->setupUi(this);
    QFont font = m_ui->lblTitle->font();
    font.setBold(true);
    font.setPointSizeF(font.pointSizeF() * 1.2);
    m_ui->lblTitle->setFont(font);
    setTextColour(*m_ui->lblHint, Palette::subtleText());

    m_ui->lstReports->setColumns({{"Report"}}, "ReportTitle");
    m_ui->lstReports->setHeaderHidden(true);
    m_ui->lstReports->setFixedHeight(fontMetrics().height() + 4); // one row
    m_ui->lstParameters->setColumns({{"Parameter", ListColumn::Text, 30}, {"Value", ListColumn::Text, 80}},
                                    "ReportParameters");
    m_ui->lstParameters->header()->setSectionsClickable(false);
    m_ui->lstParameters->setMinimumHeight(fontMetrics().height() * 5);
    m_ui->hdrParameters->attach(m_ui->paneParameters, "Report/Parameters");
    m_ui->hdrOutputs->attach(m_ui->paneOutputs, "Report/Outputs");
    buildFooter();
    connectControls();
    guardFromWheel(*this);
    followFocus(*m_ui->scroll);
    resizeToText(*this, 105, 36);
}

frmReport::~frmReport() = default;

void frmReport::buildFooter() {
    uctFooter& footer = *m_ui->footer;
    footer.addStretch();
    footer.add("Save", "&Save", "document-save", "Put the report into the template", this,
               &frmReport::cmdSave_Click);
    footer.add("Cancel", "Ca&ncel", "dialog-cancel", "Close without changing the template", this,
               &frmReport::reject);
}

void frmReport::connectControls() {
    connect(m_ui->cmbType, &QComboBox::currentIndexChanged, this, &frmReport::cmbType_Click);
    connect(m_ui->cmdReports, &QPushButton::clicked, this, &frmReport::cmdReports_Click);
    connect(m_ui->lstReports, &uctListView::rowActivated, this, &frmReport::cmdReports_Click);
    connect(m_ui->cmdParameters, &QPushButton::clicked, this, &frmReport::cmdParameters_Click);
    connect(m_ui->lstParameters, &uctListView::rowActivated, this, &frmReport::cmdParameters_Click);
    connect(m_ui->cmdShowBillSelection, &QPushButton::clicked, this, &frmReport::cmdShowBillSelection_Click);
    for (QCheckBox* output : {m_ui->chkExcel, m_ui->chkCSV})
        connect(output, &QCheckBox::toggled, this, [this, output] { output_Click(output); });
    connect(m_ui->chkEmailFiles, &QCheckBox::toggled, this, &frmReport::chkEmailFiles_Click);
}

int frmReport::Setup(int billType, const clsReport* report, int templateId) {
    return load([&] {
        const QScopedValueRollback loading(m_loading, true);
        m_templateId = templateId;
        refreshBillDates(session());
        m_ui->lblTitle->setText(report ? "Edit a report" : "Create a report");
        if (report) {
            m_report = *report;
            m_report.setParameters(report->Parameters()->Clone());
        }
        fillTypes(billType);
        showReport();
        report ? m_ui->cmdParameters->setFocus() : m_ui->cmbType->setFocus();
    })
               ? 0
               : -1;
}

void frmReport::fillTypes(int billType) {
    QComboBox& types = *m_ui->cmbType;
    for (const ReportTypeChoice& choice : reportTypeChoices(billType))
        types.addItem(choice.caption, choice.type);
    const int type = m_report.ReportType();
    // A report of a type that these bills do not offer was made for another project.
    if (types.findData(type) < 0) {
        const QString name = reportTypeName(type);
        types.addItem(name.isEmpty() ? QString("Unknown report type %1").arg(type) : name, type);
    }
    types.setCurrentIndex(types.findData(type));
}

void frmReport::cmbType_Click() {
    if (m_loading) return;
    const int type = m_ui->cmbType->currentData().toInt();
    if (m_report.ReportSubType() != 0) takeOutputs();
    m_left.insert_or_assign(m_report.ReportType(), m_report);
    const auto left = m_left.find(type);
    m_report = left == m_left.end() ? clsReport(session().project) : left->second;
    m_report.setReportType(type);
    m_changed = true;
    showReport();
}

void frmReport::showReport() {
    const bool chosen = m_report.ReportSubType() != 0;
    m_ui->cmdReports->setEnabled(m_report.ReportType() != 0);
    for (QWidget* needsReport :
         {static_cast<QWidget*>(m_ui->cmdParameters), static_cast<QWidget*>(m_ui->cmdShowBillSelection)})
        needsReport->setEnabled(chosen);
    m_ui->lstParameters->setEmptyText(m_report.ReportType() == 0 ? "Select a report type, then a report."
                                                                 : "Choose a report first.");
    showParameters();
    showOutputs();
}

/// The title is shown anew as well: those of some reports carry a parameter.
void frmReport::showParameters() {
    std::vector<ListRow> title;
    std::vector<ListRow> rows;
    if (m_report.ReportSubType() != 0) {
        title.push_back({1, {m_report.ShownTitle()}});
        const CatalogueEntry* entry = m_report.Entry();
        const auto defaults = entry ? newParameters(session(), m_report.ReportType(), *entry)
                                    : std::make_shared<clsReportParameters>(session().project);
        for (const ParameterRow& row : parameterRows(m_report, *defaults, session().project)) {
            ListRow shown{int(rows.size()), {row.caption, row.value}};
            if (row.differs) shown.background = Palette::changedValue();
            rows.push_back(std::move(shown));
        }
    }
    const qsizetype made = reportsMadeOf(*m_report.Parameters());
    m_ui->header->setNote(made > 1 ? QString("This makes %1 reports, one for each value").arg(made)
                                   : QString());
    m_ui->lstReports->setRows(std::move(title));
    m_ui->lstParameters->setRows({}); // the rows of another report have another order
    m_ui->lstParameters->setRows(std::move(rows));
}

void frmReport::showOutputs() {
    const QScopedValueRollback loading(m_loading, true);
    const bool chosen = m_report.ReportSubType() != 0;
    const CatalogueEntry* entry = m_report.Entry();
    const auto allows = [&](char letter) { return chosen && (!entry || entry->allowsOutput(letter)); };
    const auto show = [](QCheckBox& box, bool allowed, bool ticked) {
        box.setEnabled(allowed);
        box.setChecked(allowed && ticked);
    };
    show(*m_ui->chkExcel, allows('E'), m_report.OutputExcel());
    show(*m_ui->chkCSV, allows('C'), m_report.OutputCSV());
    show(*m_ui->chkEmailFiles, chosen, m_report.OutputEmail() && hasOutput());
}

void frmReport::cmdReports_Click() {
    run([this] {
        m_chooser = setUpScreen<frmSelectReports>(context(), this, "Error loading reports form",
                                                  m_report.ReportType(), m_report.ReportSubType());
        if (!m_chooser) return;
        m_chooser->SetCallback(this, "CalledbackReport");
        m_chooser->exec();
        m_chooser.reset();
    });
}

void frmReport::CalledbackReport() {
    run([this] {
        const CatalogueEntry& entry = *m_chooser->chosen();
        if (entry.id == m_report.ReportSubType()) return;
        const bool first = m_report.ReportSubType() == 0;
        m_changed = true;
        m_report.setReportSubType(entry.id);
        m_report.setParameters(newParameters(session(), m_report.ReportType(), entry));
        const GlobalOptions& defaults = session().options;
        const bool excel = first ? defaults.excel : m_ui->chkExcel->isChecked();
        const bool csv = first ? defaults.csv : m_ui->chkCSV->isChecked();
        m_report.setOutputCSV(csv && entry.allowsOutput('C'));
        // A report without any output is no use.
        m_report.setOutputExcel(entry.allowsOutput('E') && (excel || !m_report.OutputCSV()));
        if (!m_report.OutputExcel() && !m_report.OutputCSV()) m_report.setOutputCSV(true);
        m_report.setOutputEmail(m_ui->chkEmailFiles->isChecked());
        showReport();
    });
}

void frmReport::cmdParameters_Click() {
    run([this] {
        const CatalogueEntry* entry = m_report.Entry();
        if (!entry || !entry->offersAnyGroup()) {
            messages().notice(this, "There are no parameters available for this report.");
            return;
        }
        const auto editor = setUpScreen<frmSelectParameters>(context(), this, "Error loading parameters form",
                                                             m_report, m_templateId);
        if (!editor) return;
        editor->SetCallback(this, "CalledbackParam");
        editor->exec();
    });
}

void frmReport::CalledbackParam() {
    m_changed = true;
    run([this] { showParameters(); });
}

void frmReport::cmdShowBillSelection_Click() {
    run([this] {
        m_billSelection = setUpScreen<frmBillSelection>(context(), this, "Error loading the bills",
                                                        m_report.Parameters()->BillIds());
        if (!m_billSelection) return;
        m_billSelection->SetCallback(this, "fBillSelction_FormClosed");
        m_billSelection->exec();
        m_billSelection.reset();
    });
}

void frmReport::fBillSelction_FormClosed() {
    m_report.Parameters()->setBillIds(m_billSelection->BillIds());
    m_changed = true;
    run([this] { showParameters(); });
}

bool frmReport::hasOutput() const {
    return m_ui->chkExcel->isChecked() || m_ui->chkCSV->isChecked();
}

void frmReport::output_Click(QCheckBox* clicked) {
    if (m_loading) return;
    m_changed = true;
    if (hasOutput()) return;
    {
        const QScopedValueRollback loading(m_loading, true);
        clicked->setChecked(true);
    }
    messages().notice(this, "You must have at least one output selected");
}

void frmReport::chkEmailFiles_Click() {
    if (m_loading) return;
    m_changed = true;
    if (!m_ui->chkEmailFiles->isChecked()) return;
    bool allowed = false;
    run([&] {
        if (!hasOutput())
            messages().notice(this, "You must have at least Excel or CSV selected to Email files.");
        else if (readDefaultEmail(session().db()).isEmpty())
            messages().notice(this, "You must specify a default email address in the Email Options screen "
                                    "before emails can be sent.");
        else
            allowed = true;
    });
    if (allowed) return;
    const QScopedValueRollback loading(m_loading, true);
    m_ui->chkEmailFiles->setChecked(false);
}

QString frmReport::firstFault() const {
    const clsReportParameters& parameters = *m_report.Parameters();
    const int report = m_report.ReportSubType();
    if (m_report.ReportType() == 0) return "Please select a report type";
    if (report == 0) return "You must select a report.";
    switch (parameterChecks::missingValue(report, parameters)) {
        using enum parameterChecks::MissingValue;
    case CallsFrom:
        return "You have not selected any numbers for the 'Calls From Number' Report";
    case CallsTo:
        return "You have not selected any numbers for the 'Calls To Number' Report";
    case CallsNotTo:
        return "You have not selected any numbers for the 'Calls Not To Number' Report";
    case Circuit:
        return "You have not selected a circuit for the 'Selected Circuit' Report";
    case None:
        break;
    }
    if (isHandsetReport(m_report.ReportType(), report) && parameters.ServiceNumber().isEmpty()
        && parameters.LineSelection().isEmpty())
        return "You have not selected a handset for the 'Selected Handset' Report";
    return hasOutput() ? QString() : "You must have at least one output selected";
}

void frmReport::cmdSave_Click() {
    run([this] {
        if (const QString fault = firstFault(); !fault.isEmpty()) {
            messages().notice(this, fault);
            return;
        }
        takeOutputs();
        callBackAndClose();
    });
}

void frmReport::takeOutputs() {
    m_report.setOutputExcel(m_ui->chkExcel->isChecked());
    m_report.setOutputCSV(m_ui->chkCSV->isChecked());
    m_report.setOutputEmail(m_ui->chkEmailFiles->isChecked());
}

bool frmReport::mayClose() {
    return !m_changed || messages().ask(this, "Are you sure you want to cancel your changes?");
}
