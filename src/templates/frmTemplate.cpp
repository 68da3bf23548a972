#include "templates/frmTemplate.h"

#include "base/Session.h"
#include "base/modCommonFunctions.h"
#include "db/DbError.h"
#include "numbers/ExcludedNumbers.h"
#include "projects/frmSQLServerDatabases.h"
#include "projects/modProjects.h"
#include "reports/BillType.h"
#include "reports/ReportFanOut.h"
#include "reports/ReportText.h"
#include "reports/ReportTypes.h"
#include "templates/frmReport.h"
#include "templates/modTemplates.h"
#include "templates/uctOutputIcons.h"
#include "ui/Cursors.h"
#include "ui/Labels.h"
#include "ui/Messages.h"
#include "ui/SlotGuard.h"
#include "ui/WindowSize.h"
#include "ui/openScreen.h"
#include "ui_frmTemplate.h"

#include <QHeaderView>
#include <QScopedValueRollback>
#include <numeric>

namespace {

void showReadOnly(QLineEdit& box, const QString& text) {
    box.setText(text);
    box.setCursorPosition(0);
    setReadOnly(box, true);
}

} // namespace

frmTemplate::frmTemplate(ScreenContext& context, QWidget* parent)
    : ScreenDialog(context, parent),
      m_ui(std::make_unique<Ui::frmTemplate>()),
      m_template(session().db(), session().project) {
    m_ui->setupUi(this);
    m_ui->lstReports->setColumns({{"Report", ListColumn::Text, 50},
                                  {"Type", ListColumn::Text, 24},
                                  {"Outputs and parameters", ListColumn::Text, 76}},
                                 "TemplateReports");
    m_ui->lstReports->setEmptyText("This template holds no report yet. Add Report makes one.");
    m_ui->lstReports->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_ui->lstReports->setRowsMovable();
    m_ui->lstReports->setIconSize(outputIconsSize(fontMetrics().height()));
    m_ui->lstReports->header()->setSectionsClickable(false); // the reports' own order is shown
    m_ui->hdrReports->attach(m_ui->lstReports, "Template/Reports");
    buildFooter();
    connectControls();
    resizeToText(*this, 145, 34);
}

frmTemplate::~frmTemplate() {
    session().project.edited = {};
}

void frmTemplate::buildFooter() {
    uctFooter& footer = *m_ui->footer;
    QAction* add = footer.add("Add", "&Add Report", "list-add", "Add a report to the template", this,
                              &frmTemplate::cmdAdd_Click);
    add->setShortcut(QKeySequence::New);
    QAction* edit = footer.add("Edit", "&Edit Report", "document-edit", "Edit the selected report", this,
                               &frmTemplate::cmdEdit_Click);
    QAction* remove = footer.add("Delete", "&Delete Report", "edit-delete", "Remove the selected reports",
                                 this, &frmTemplate::cmdDelete_Click);
    footer.needSelection({m_ui->lstReports}, {edit, remove});
    m_cmdDuplicate = footer.add("Duplicate", "D&uplicate", "edit-copy", "Add a copy of the selected report",
                                this, &frmTemplate::cmdDuplicate_Click);
    m_cmdUp = footer.add("Up", "&Move Up", "go-up", "Move the selected reports up", this,
                         [this] { moveSelected(m_ui->lstReports->selectedIds().first() - 1); });
    m_cmdDown = footer.add("Down", "Move D&own", "go-down", "Move the selected reports down", this,
                           [this] { moveSelected(m_ui->lstReports->selectedIds().last() + 2); });
    m_cmdUp->setShortcut(Qt::ALT | Qt::Key_Up);
    m_cmdDown->setShortcut(Qt::ALT | Qt::Key_Down);
    m_undo = new QAction("Undo Delete", this);
    m_undo->setShortcut(QKeySequence::Undo);
    m_undo->setShortcutContext(Qt::WidgetShortcut); // boxes of text have an undo of their own
    connect(m_undo, &QAction::triggered, this, &frmTemplate::undoDelete);
    m_ui->lstReports->offer({edit, m_cmdDuplicate, m_cmdUp, m_cmdDown, remove, m_undo, add}, edit, remove);
    footer.addStretch();
    footer.add("Save", "&Save", "document-save", "Save the template", this, &frmTemplate::cmdSave_Click);
    m_cmdSaveAs =
        footer.add("SaveAs", "Sa&ve As", "document-save-as", "Save as a new template under another name",
                   this, &frmTemplate::cmdSaveAs_Click);
    footer.add("Exit", "E&xit", "dialog-close", "Return to the previous screen", this, &QDialog::reject);
}

void frmTemplate::connectControls() {
    connect(m_ui->txtTemplate, &QLineEdit::textChanged, this, &frmTemplate::txtTemplate_Change);
    connect(m_ui->cmdOpen, &QPushButton::clicked, this, &frmTemplate::cmdOpen_Click);
    connect(m_ui->optDate0, &QRadioButton::toggled, this, &frmTemplate::optDate_Click);
    connect(m_ui->chkCSVRepDefs, &QCheckBox::toggled, this, &frmTemplate::chkCSVRepDefs_Click);
    connect(m_ui->lstReports, &uctListView::rowActivated, this, &frmTemplate::cmdEdit_Click);
    connect(m_ui->lstReports, &uctListView::deletePressed, this, &frmTemplate::cmdDelete_Click);
    connect(m_ui->lstReports, &uctListView::rowsDropped, this,
            [this](int before) { moveSelected(before + 1); });
    connect(m_ui->lstReports, &uctListView::selectedIdChanged, this, &frmTemplate::updateButtons);
}

int frmTemplate::Setup(int templateId) {
    bool loaded = true;
    const bool done = load([&] {
        WaitCursor wait;
        refreshBillDates(session());
        if (templateId >= 0)
            loaded = m_template.LoadTemplate(templateId);
        else
            startNewTemplate();
        if (!loaded) return;
        m_ui->cmdOpen->setVisible(templateId < 0);
        m_cmdSaveAs->setVisible(templateId >= 0);
        m_ui->header->setNote(templateId >= 0 ? "Edit a template" : "Add a template");
        showTemplate();
    });
    return done && loaded ? 0 : -1;
}

void frmTemplate::showTemplate() {
    m_ui->txtTemplate->setText(m_template.Title());
    showAccount();
    (m_template.DefaultDates() ? m_ui->optDate0 : m_ui->optDate1)->setChecked(true);
    m_ui->chkCSVRepDefs->setChecked(m_template.CSVReportDefs());
    showReports({1});
    m_ready = true;
}

/// What the reports take from the template is told to them as well.
void frmTemplate::showAccount() {
    session().project.edited = {m_template.UnitabAccount(), m_template.BillType(), m_template.DefaultDates()};
    showReadOnly(*m_ui->txtUnitab, m_template.UnitabAccount());
    showReadOnly(*m_ui->txtBillType, billTypeName(m_template.BillType()));
}

void frmTemplate::startNewTemplate() {
    m_template.StartNew();
    session().newExclusions.clear();
}

/// The rows are keyed by the positions of their reports, so that a row stays where it is while the
/// reports change their places.
void frmTemplate::showReports(QList<int> selected) {
    std::vector<ListRow> rows;
    for (clsReport& report : m_template.Reports()) {
        // The titles of invoice charges tell enough; their type has no name of its own here.
        const int type = report.ReportType();
        const QString summary = reportSummary(report);
        const QString distinct = distinctValue(*report.Parameters());
        rows.push_back({int(rows.size()) + 1,
                        {report.ShownTitle(), type == InvoiceReport ? QString() : reportTypeName(type),
                         distinct.isEmpty() ? summary : distinct + " \u2013 " + summary}});
        rows.back().cells.back().icon = outputIcons(report);
        rows.back().toolTip = summary;
    }
    const int count = int(rows.size());
    m_ui->hdrReports->setTitle(count == 1 ? "1 Report" : QString("%1 Reports").arg(count));
    m_ui->lstReports->setRows(std::move(rows));
    for (int& position : selected) position = qMin(position, count);
    m_ui->lstReports->selectIds(selected);
    updateButtons();
}

void frmTemplate::updateButtons() {
    const QList<int> selected = m_ui->lstReports->selectedIds();
    const bool one = selected.size() == 1;
    m_ui->cmdOpen->setEnabled(m_template.Reports().Count() == 0);
    const QString noReport = "Select a report.";
    const bool any = !selected.isEmpty();
    m_ui->footer->setUsable(m_cmdDuplicate, one, "Select one report.");
    m_ui->footer->setUsable(m_cmdUp, any && selected.first() > 1,
                            any ? "The first report is among them." : noReport);
    m_ui->footer->setUsable(m_cmdDown, any && selected.last() < m_template.Reports().Count(),
                            any ? "The last report is among them." : noReport);
    m_undo->setEnabled(!m_removed.empty());
}

void frmTemplate::cmdOpen_Click() {
    run([this] {
        if (!chooseProject(context(), this)) return;
        m_template.TakeProject();
        showAccount();
    });
}

void frmTemplate::txtTemplate_Change(const QString& title) {
    if (m_ready) m_template.setTitle(title);
}

void frmTemplate::optDate_Click() {
    if (!m_ready) return;
    run([this] {
        m_template.setDefaultDates(m_ui->optDate0->isChecked());
        showAccount();
        showReports(m_ui->lstReports->selectedIds());
    });
}

void frmTemplate::chkCSVRepDefs_Click(bool ticked) {
    if (m_ready) m_template.setCSVReportDefs(ticked);
}

/// The lists to choose parameters from are those of a project of the template's account.
bool frmTemplate::ensureProject() {
    const QString& account = m_template.UnitabAccount();
    const auto fits = [&] { return session().project.isOfAccount(account); };
    if (fits() || (chooseProject(context(), this, account) && fits())) {
        showAccount(); // the project may know the kind of bills
        return true;
    }
    tell(QString("Please select a project with the bill account of '%1' to continue.").arg(account));
    return false;
}

void frmTemplate::cmdAdd_Click() {
    run([this] {
        if (ensureProject()) editReport(0);
    });
}

void frmTemplate::cmdEdit_Click() {
    run([this] {
        const std::optional<int> position = m_ui->lstReports->selectedId();
        if (!position)
            tell("You must select a report to edit.");
        else if (ensureProject())
            editReport(*position);
    });
}

void frmTemplate::editReport(int position) {
    const clsReport* report = position > 0 ? &m_template.Reports().Item(position) : nullptr;
    m_reportEditor = setUpScreen<frmReport>(context(), this, "Error loading report form",
                                            m_template.BillType(), report, m_template.ID());
    if (!m_reportEditor) return;
    m_reportEditor->SetCallback(this, "Calledback");
    const QScopedValueRollback edited(m_edited, position);
    m_reportEditor->exec();
    m_reportEditor.reset();
}

void frmTemplate::CalledBack() {
    run([this] {
        const int position = putReport(m_template.Reports(), m_reportEditor->Report(), m_edited);
        m_template.MarkChanged();
        showReports({position});
    });
}

void frmTemplate::cmdDelete_Click() {
    run([this] {
        const QList<int> positions = m_ui->lstReports->selectedIds();
        if (positions.isEmpty()) {
            tell("You must select a report to delete.");
            return;
        }
        const QString which = positions.size() == 1
                                  ? QString("the selected report")
                                  : QString("the %1 selected reports").arg(positions.size());
        if (!confirm("Are you sure you want to delete " + which + "?")) return;
        std::map<int, clsReport> removed;
        for (auto position = positions.rbegin(); position != positions.rend(); ++position) {
            removed.emplace(*position, m_template.Reports().Item(*position));
            m_template.Reports().Remove(*position);
        }
        m_removed.push_back(std::move(removed));
        m_template.MarkChanged();
        showReports({positions.first()});
    });
}

/// The reports that were deleted last come back to their places, as far as there are so many now.
void frmTemplate::undoDelete() {
    run([this] {
        const std::map<int, clsReport> removed = std::move(m_removed.back());
        m_removed.pop_back();
        for (const auto& [position, report] : removed)
            insertReport(m_template.Reports(), report, qMin(position, m_template.Reports().Count() + 1));
        m_template.MarkChanged();
        showReports({removed.begin()->first});
    });
}

void frmTemplate::cmdDuplicate_Click() {
    run([this] {
        const int position = m_ui->lstReports->selectedId().value();
        duplicateReport(m_template.Reports(), position);
        m_template.MarkChanged();
        showReports({position + 1});
    });
}

void frmTemplate::moveSelected(int before) {
    run([this, before] {
        const QList<int> positions = m_ui->lstReports->selectedIds();
        const int first = moveReports(m_template.Reports(), positions, before);
        QList<int> moved(positions.size());
        std::iota(moved.begin(), moved.end(), first);
        if (moved != positions) m_template.MarkChanged();
        showReports(moved);
    });
}

void frmTemplate::tell(const QString& text) {
    NormalCursor normal;
    messages().notice(this, text);
}

bool frmTemplate::confirm(const QString& question) {
    NormalCursor normal;
    return messages().ask(this, question);
}

bool frmTemplate::checkOutputs() {
    int position = 0;
    for (clsReport& report : m_template.Reports()) {
        ++position;
        if (report.OutputExcel() || report.OutputPrint() || report.OutputCSV()) continue;
        m_ui->lstReports->selectId(position);
        tell("You have a report with no output, please either remove the report or specify an output "
             "option.");
        return false;
    }
    return true;
}

clsTemplate::SaveResult frmTemplate::store(const QString& newTitle) {
    const clsTemplate::SaveResult result = m_template.SaveTemplate(newTitle);
    if (result != clsTemplate::ChangedMeanwhile) return result;
    const bool overwrite = confirm("Another user changed this template while you were editing it.\n\n"
                                   "Do you want to replace those changes by yours?");
    return overwrite ? m_template.SaveTemplate(newTitle, clsTemplate::Overwrite) : result;
}

void frmTemplate::cmdSave_Click() {
    run(
        [this] {
            if (m_template.Title().trimmed().isEmpty()) {
                tell("Please enter a Template name");
                m_ui->txtTemplate->setFocus();
                return;
            }
            WaitCursor wait;
            if (!checkOutputs()) return;
            const QString question = activeSchedulesQuestion(session().db(), m_template.ID());
            if (!question.isEmpty() && !confirm(question)) return;
            switch (store({})) {
            case clsTemplate::Saved:
                return callBackAndClose();
            case clsTemplate::TitleUsed:
                tell("Template name already exists");
                return m_ui->txtTemplate->setFocus();
            case clsTemplate::ChangedMeanwhile:
                return; // the user has decided to keep editing
            default:
                tell("Error saving template");
            }
        },
        "Error saving template");
}

/// Empty when the user gives up.
QString frmTemplate::askNewTitle() {
    const QString proposed = m_newTitle.isEmpty() ? m_template.Title() : m_newTitle;
    const QString title =
        messages().input(this, "Please enter a new template title", proposed).value_or(QString()).trimmed();
    m_newTitle = title;
    if (title.size() <= TemplateHeader::longestTitle) return title;
    const QString cut = cutText(title, TemplateHeader::longestTitle);
    const bool agreed = messages().ask(
        this,
        QString("The selected template title is too long and will be truncated to \n'%1'\nAre you sure you "
                "want to continue?")
            .arg(cut),
        Messages::Information);
    return agreed ? cut : QString();
}

void frmTemplate::cmdSaveAs_Click() {
    run(
        [this] {
            if (!checkOutputs()) return;
            const QString title = askNewTitle();
            if (title.isEmpty()) return;
            WaitCursor wait;
            switch (store(title)) {
            case clsTemplate::Saved:
                return callBackAndClose();
            case clsTemplate::TitleBlank:
                return tell("Error saving template, title is blank");
            case clsTemplate::TitleUsed:
                return tell("Error saving template, title already exists");
            default:
                tell("Error saving template");
            }
        },
        "Error saving template");
}

bool frmTemplate::mayClose() {
    const bool leaves =
        !m_template.HasChanged() || messages().ask(this, "Are you sure you want to cancel your changes?");
    if (leaves && m_template.ID() == -1) forgetExcludedNumbers();
    return leaves;
}

/// Those entered for a template that is never saved would fall to the next new one. What cannot be
/// removed now goes at the next login.
void frmTemplate::forgetExcludedNumbers() {
    const QStringList numbers = std::exchange(session().newExclusions, {});
    if (numbers.isEmpty()) return;
    try {
        ExcludedNumbers(session().db(), -1).removeAll(numbers);
    } catch (const DbError& error) {
        session().log.write("frmTemplate.forgetExcludedNumbers", error);
    }
}
