#include "projects/frmSQLServerDatabases.h"

#include "base/Session.h"
#include "projects/ProjectList.h"
#include "projects/modProjects.h"
#include "ui/Cursors.h"
#include "ui/Messages.h"
#include "ui/SlotGuard.h"
#include "ui/WindowSize.h"
#include "ui/openScreen.h"
#include "ui_frmSQLServerDatabases.h"

frmSQLServerDatabases::frmSQLServerDatabases(ScreenContext& context, QWidget* parent)
    : ScreenDialog(context, parent), m_ui(std::make_unique<Ui::frmSQLServerDatabases>()) {
    m_ui->setupUi(this);
    m_ui->header->setNote("Select a project");
    m_ui->List1->setColumns({{"Project"}}, "Projects");
    m_ui->List1->setEmptyText("No project on this server can be opened.");
    m_ui->footer->addStretch();
    QAction* cmdOpen = m_ui->footer->add("Open", "&Open", "document-open", "Open the selected project", this,
                                         &frmSQLServerDatabases::lblOpen_Click);
    m_ui->footer->add("Cancel", "&Cancel", "dialog-cancel", "Close without choosing a project", this,
                      &QDialog::reject);
    m_ui->txtSearch->attach(*m_ui->List1);
    m_ui->footer->needSelection({m_ui->List1}, {cmdOpen});
    m_ui->List1->offer({cmdOpen}, cmdOpen);
    connect(m_ui->List1, &uctListView::rowActivated, this, &frmSQLServerDatabases::lblOpen_Click);
    connect(m_ui->txtSearch, &QLineEdit::textChanged, this, &frmSQLServerDatabases::txtSearch_Change);
    connect(m_ui->txtSearch, &QLineEdit::returnPressed, this, &frmSQLServerDatabases::lblOpen_Click);
    resizeToText(*this, 70, 26);
}

frmSQLServerDatabases::~frmSQLServerDatabases() = default;

int frmSQLServerDatabases::Setup() {
    ProjectList list;
    if (!load([&] { list = loadProjectList(session()); })) return -1;
    m_projects = list.names;
    std::vector<ListRow> rows;
    for (int i = 0; i < m_projects.size(); ++i) rows.push_back({i, {m_projects[i]}});
    m_ui->List1->setRows(std::move(rows));
    m_ui->List1->selectId(int(m_projects.indexOf(session().project.database)));
    if (!list.leftOut.isEmpty())
        messages().notice(
            parentWidget(),
            QString("Some imported projects appear to have no cost centres or are corrupt.  These are listed "
                    "in the log file (%1).  Please contact your Administrator.")
                .arg(session().log.path()));
    return 0;
}

QString frmSQLServerDatabases::selectedProject() const {
    const std::optional<int> selected = m_ui->List1->selectedId();
    return selected ? m_projects[*selected] : QString();
}

void frmSQLServerDatabases::lblOpen_Click() {
    if (selectedProject().isEmpty())
        messages().notice(this, "You must select a project in the list before clicking open.");
    else
        accept();
}

void frmSQLServerDatabases::txtSearch_Change(const QString& text) {
    if (text.isEmpty()) return;
    const QAbstractItemModel& shown = *m_ui->List1->model(); // a click on its header turns the order
    for (int row = 0; row < shown.rowCount(); ++row) {
        if (!shown.index(row, 0).data().toString().startsWith(text, Qt::CaseInsensitive)) continue;
        m_ui->List1->setCurrentIndex(shown.index(row, 0));
        return;
    }
}

bool useProject(ScreenContext& context, QWidget* parent, const QString& database) {
    Session& session = context.session;
    const CurrentProject former = session.project;
    bool usable = false;
    guarded(
        context, parent,
        [&] {
            WaitCursor wait;
            openProject(session, database);
            if (CheckForCurrentUnitabAccountField(session, true))
                openProject(session, database); // another account now
            usable = masterCostCentresExist(session);
            if (!usable)
                context.messages.notice(parent,
                                        "No master Cost Centre entries can be found for this project.");
        },
        {}, "frmSQLServerDatabases.OpenProject");
    if (!usable) session.project = former;
    return usable;
}

bool chooseProject(ScreenContext& context, QWidget* parent) {
    const auto screen =
        openScreen<frmSQLServerDatabases>(context, parent, "Error loading the list of projects");
    return screen && screen->result() == QDialog::Accepted
           && useProject(context, parent, screen->selectedProject());
}
