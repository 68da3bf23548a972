#include "templates/frmManageTemplates.h"

#include "base/Session.h"
#include "base/modCommonFunctions.h"
#include "db/DbError.h"
#include "projects/frmSQLServerDatabases.h"
#include "reports/BillType.h"
#include "templates/TemplateSummary.h"
#include "templates/TemplateUsage.h"
#include "templates/clsTemplate.h"
#include "templates/frmTemplate.h"
#include "templates/frmTransfer.h"
#include "templates/modTemplates.h"
#include "ui/Cursors.h"
#include "ui/DateCell.h"
#include "ui/Icons.h"
#include "ui/Messages.h"
#include "ui/SlotGuard.h"
#include "ui/WindowSize.h"
#include "ui/openScreen.h"
#include "ui_frmManageTemplates.h"

#include <algorithm>

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
    footer.needSelection({m_ui->lstTemplates}, {edit, remove, duplicate, schedule});
    m_ui->lstTemplates->offer({edit, duplicate, schedule, remove, add}, edit, remove);
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
        if (const std::optional<int> id = m_ui->lstTemplates->selectedId())
            editTemplate(*id);
        else
            messages().notice(this, "You must select a template to edit.");
    });
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
        for (int number = 2; copy.SaveTemplate(numberedTitle(title, number, 50)) == clsTemplate::TitleUsed;)
            ++number;
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
        const std::optional<int> id = m_ui->lstTemplates->selectedId();
        if (!id) {
            messages().notice(this, "You must select a template to delete.");
            return;
        }
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
