#include "templates/frmManageTemplates.h"

#include "base/Session.h"
#include "base/WholeFile.h"
#include "base/modCommonFunctions.h"
#include "db/DbError.h"
#include "projects/frmSQLServerDatabases.h"
#include "reports/BillType.h"
#include "templates/TemplateImport.h"
#include "templates/TemplateSummary.h"
#include "templates/TemplateUsage.h"
#include "templates/clsTemplate.h"
#include "templates/frmTemplate.h"
#include "templates/frmTemplateImport.h"
#include "templates/frmTransfer.h"
#include "templates/modTemplates.h"
#include "ui/Cursors.h"
#include "ui/DateCell.h"
#include "ui/Icons.h"
#include "ui/Messages.h"
#include "ui/SavePath.h"
#include "ui/SlotGuard.h"
#include "ui/WindowSize.h"
#include "ui/openScreen.h"
#include "ui_frmManageTemplates.h"

#include <algorithm>

namespace {

const QString templateFiles = "Template files (*.json);;All files (*.*)";

} // namespace

frmManageTemplates::frmManageTemplates(ScreenContext& context, QWidget* parent)
    : ScreenDialog(context, parent), m_ui(std::make_unique<Ui::frmManageTemplates>()) {
    m_ui->setupUi(this);
    m_ui->lstTemplates->setColumns({{"Template Name", ListColumn::Text, 44},
                                    {"Account Reference", ListColumn::Text, 24},
                                    {"Bill Type", ListColumn::Text, 20},
                                    {"No of Reports", ListColumn::Number, 20},
                                    {"Active Schedules Count", ListColumn::Number, 32},
                                    {"Last Used", ListColumn::Text, 24}},
                                   "Templates");
    m_ui->lstTemplates->setEmptyText("There is no template yet. Add Template makes one.");
    buildFooter();
    connect(m_ui->lstTemplates, &uctListView::rowActivated, this, &frmManageTemplates::cmdEdit_Click);
    connect(m_ui->lstTemplates, &uctListView::deletePressed, this, &frmManageTemplates::cmdDelete_Click);
    m_ui->txtFilter->attach(*m_ui->lstTemplates);
    connect(m_ui->txtFilter, &QLineEdit::textChanged, m_ui->lstTemplates, &uctListView::setFilterWords);
    connect(m_ui->txtFilter, &QLineEdit::returnPressed, m_ui->txtFilter, &uctFilterBox::goToList);
    resizeToText(*this, 170, 34);
}

frmManageTemplates::~frmManageTemplates() = default;

void frmManageTemplates::buildFooter() {
    uctFooter& footer = *m_ui->footer;
    QAction* add = footer.add("Add", "&Add Template", "list-add", "Make a new template for a project", this,
                              &frmManageTemplates::cmdAdd_Click);
    add->setShortcut(QKeySequence::New);
    QAction* edit = footer.add("Edit", "&Edit Template", "document-edit", "Edit the selected template", this,
                               &frmManageTemplates::cmdEdit_Click);
    QAction* remove = footer.add("Delete", "&Delete Template", "edit-delete",
                                 "Delete the selected template and its schedules", this,
                                 &frmManageTemplates::cmdDelete_Click);
    QAction* duplicate =
        footer.add("Duplicate", "D&uplicate", "edit-copy", "Make a copy of the selected template", this,
                   &frmManageTemplates::cmdDuplicate_Click);
    QAction* schedule =
        footer.add("Schedule", "&Schedule…", "appointment-new", "Make a schedule for the selected template",
                   this, [this] { emit scheduleRequested(m_ui->lstTemplates->selectedId().value()); });
    QAction* exportThem =
        footer.add("Export", "E&xport…", "document-export", "Write the selected templates to a file", this,
                   &frmManageTemplates::cmdExport_Click);
    QAction* import = footer.add("Import", "&Import…", "document-import",
                                 "Add the templates of a file to the account of the current project", this,
                                 &frmManageTemplates::cmdImport_Click);
    if (const QString refusal = TemplateImport::refusalFor(session()); !refusal.isEmpty())
        footer.setUsable(import, false, refusal);
    m_ui->lstTemplates->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_ui->lstTemplates->offer({edit, duplicate, schedule, exportThem, remove, add, import}, edit, remove);
    footer.needSelection({m_ui->lstTemplates}, {edit, remove, duplicate, schedule, exportThem});
    connect(m_ui->lstTemplates, &uctListView::selectedIdChanged, this,
            [this, one = QList{edit, remove, duplicate, schedule}] {
                if (m_ui->lstTemplates->selectedIds().size() < 2) return;
                for (QAction* action : one)
                    m_ui->footer->setUsable(action, false, "Several templates are selected.");
            });
    footer.addStretch();
    footer.add("Close", "&Close", "dialog-close", "Return to the previous screen", this, &QDialog::reject);
}

int frmManageTemplates::Setup() {
    return load([this] {
        fillList();
        m_ui->txtFilter->goToList();
    })
               ? 0
               : -1;
}

void frmManageTemplates::CalledBack() {
    run([this] { fillList(); });
}

void frmManageTemplates::fillList() {
    WaitCursor wait;
    const QIcon icons[] = {rowIcon("view-list-text"), rowIcon("view-list-tree")};
    const QHash<int, TemplateSummary> summaries = loadTemplateSummaries(session().db());
    std::vector<ListRow> rows;
    for (const TemplateUsage& usage : loadTemplateUsage(session())) {
        const auto summary = summaries.find(usage.templateId);
        if (summary == summaries.end()) continue; // made between the two readings
        const TemplateHeader& header = summary->header;
        ListRow row{header.id,
                    {header.title, header.unitabAccount, billTypeName(header.billType),
                     ListCell::number(summary->reportCount), ListCell::number(usage.activeCount),
                     dateCell(usage.lastUsed, usage.lastRun)}};
        row.cells.first().icon = icons[clsTemplate::iconOf(header)];
        rows.push_back(std::move(row));
    }
    // The server promises no order; a click on a header sorts otherwise.
    std::ranges::sort(rows, {}, [](const ListRow& row) { return row.text(0).toCaseFolded(); });
    m_ui->header->setNote(rows.size() == 1 ? QString("1 template")
                                           : QString("%1 templates").arg(rows.size()));
    m_ui->lstTemplates->setRows(std::move(rows));
}

void frmManageTemplates::cmdAdd_Click() {
    run([this] {
        if (!session().project.database.isEmpty() || chooseProject(context(), this)) openEditor(-1);
    });
}

void frmManageTemplates::cmdEdit_Click() {
    run([this] {
        if (const std::optional<int> id = oneSelected("edit")) editTemplate(*id);
    });
}

/// Keys reach the slots of greyed buttons too: the user is told why nothing happens.
std::optional<int> frmManageTemplates::oneSelected(const QString& purpose) {
    const QList<int> ids = m_ui->lstTemplates->selectedIds();
    if (ids.size() == 1) return ids.first();
    messages().notice(this, ids.isEmpty() ? QString("You must select a template to %1.").arg(purpose)
                                          : QString("Please select only one template to %1.").arg(purpose));
    return {};
}

void frmManageTemplates::tellGone() {
    messages().notice(this, "This template has been deleted by somebody else in the meantime.");
    fillList();
}

void frmManageTemplates::cmdDuplicate_Click() {
    run([this] {
        WaitCursor wait;
        clsTemplate copy(session().db(), session().project);
        if (!copy.LoadTemplate(m_ui->lstTemplates->selectedId().value())) return tellGone();
        const QString title = copy.Title();
        const auto save = [&](int number) {
            return copy.SaveTemplate(numberedTitle(title, number, TemplateHeader::longestTitle));
        };
        for (int number = 2; save(number) == clsTemplate::TitleUsed;) ++number;
        fillList();
        m_ui->lstTemplates->selectId(copy.ID());
    });
}

void frmManageTemplates::editTemplate(int templateId) {
    const std::optional<int> type = readTemplateType(session().db(), templateId);
    if (!type) {
        tellGone();
    } else if (*type == 0) {
        openEditor(templateId);
    } else {
        openScreen<frmTransfer>(context(), this, "Error Loading ", templateId);
    }
}

/// A template that is made there is selected afterwards.
void frmManageTemplates::openEditor(int templateId) {
    if (const auto editor = openScreen<frmTemplate>(context(), this, "Error loading template", templateId))
        m_ui->lstTemplates->selectId(editor->ID());
}

void frmManageTemplates::cmdDelete_Click() {
    run([this] {
        const std::optional<int> id = oneSelected("delete");
        if (!id) return;
        WaitCursor wait;
        const auto agreed = [&](const ScheduleCounts& schedules) {
            NormalCursor normal;
            return messages().ask(this, deleteQuestion(schedules));
        };
        ScheduleCounts schedules;
        do {
            schedules = countSchedules(session().db(), *id);
            if (!agreed(schedules)) return;
        } while (!deleteTemplate(session().db(), *id, schedules));
        fillList();
    });
}

void frmManageTemplates::cmdExport_Click() {
    run([this] {
        const QList<int> ids = m_ui->lstTemplates->selectedIds();
        const QString name =
            ids.size() == 1 ? safeFileName(m_ui->lstTemplates->textOf(ids.first(), 0)) : QString("templates");
        const QString path = askSavePath(messages(), this, name, ".json", templateFiles);
        if (path.isEmpty()) return;
        WaitCursor wait;
        const QByteArray document = templateFile::write(templateFile::load(session().db(), ids));
        if (const QString problem = writeWhole(path, document); !problem.isEmpty())
            messages().notice(this, QString("The file '%1' could not be written.").arg(path), Messages::Plain,
                              {}, problem);
        else
            messages().notice(this,
                              ids.size() == 1
                                  ? QString("1 template has been exported to the file.")
                                  : QString("%1 templates have been exported to the file.").arg(ids.size()));
    });
}

/// The account that the templates go into is the current project's.
void frmManageTemplates::cmdImport_Click() {
    run([this] {
        if (session().project.database.isEmpty() && !chooseProject(context(), this)) return;
        const QString path = messages().openFile(this, {}, templateFiles);
        if (path.isEmpty()) return;
        const auto preview =
            openScreen<frmTemplateImport>(context(), this, "The file cannot be imported.", path);
        if (preview) m_ui->lstTemplates->selectId(preview->firstId());
    });
}
