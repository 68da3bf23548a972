#include "projects/frmSQLServerDatabases.h"

#include "base/Session.h"
#include "projects/ProjectList.h"
#include "projects/modProjects.h"
#include "reports/BillType.h"
#include "ui/Cursors.h"
#include "ui/Labels.h"
#include "ui/ListHabits.h"
#include "ui/Messages.h"
#include "ui/Palette.h"
#include "ui/SlotGuard.h"
#include "ui/WindowSize.h"
#include "ui/openScreen.h"
#include "ui_frmSQLServerDatabases.h"

#include <QLocale>
#include <algorithm>

frmSQLServerDatabases::frmSQLServerDatabases(ScreenContext& context, QWidget* parent)
    : ScreenDialog(context, parent), m_ui(std::make_unique<Ui::frmSQLServerDatabases>()) {
    m_ui->setupUi(this);
    m_ui->header->setNote("Select a project");
    m_ui->List1->setColumns({{"Project", ListColumn::Text, 34},
                             {"Account Reference", ListColumn::Text, 22},
                             {"Bill Type", ListColumn::Text, 18},
                             {"First Bill", ListColumn::Text, 16},
                             {"Last Bill", ListColumn::Text, 16}},
                            "Projects");
    setTextColour(*m_ui->lblLeftOut, Palette::subtleText());
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
    resizeToText(*this, 110, 26);
}

frmSQLServerDatabases::~frmSQLServerDatabases() = default;

int frmSQLServerDatabases::Setup(const QString& wantedAccount) {
    ProjectList list;
    const bool done = load([&] {
        list = loadProjectList(session());
        m_projects = list.names;
        fillList(wantedAccount);
    });
    if (!done) return -1;
    tellLeftOut(list.leftOut);
    return 0;
}

void frmSQLServerDatabases::fillList(const QString& wantedAccount) {
    const QList<ProjectDetails> details = readProjectDetails(session(), m_projects);
    const auto cell = [](QDate date) {
        const QString shown = date.isValid() ? QLocale::c().toString(date, "dd MMM yyyy") : QString();
        return ListCell(shown, date.isValid() ? std::optional(double(date.toJulianDay())) : std::nullopt);
    };
    std::vector<ListRow> rows;
    bool anyWanted = false;
    for (int i = 0; i < m_projects.size(); ++i) {
        const ProjectDetails& project = details[i];
        anyWanted = anyWanted || sameOnServer(project.account, wantedAccount);
        rows.push_back({i,
                        {m_projects[i], project.account,
                         project.billType == 0 ? QString() : billTypeName(project.billType),
                         cell(project.firstBill), cell(project.lastBill)}});
    }
    m_ui->List1->setRows(std::move(rows));
    m_ui->chkAccount->setText("&Only projects of the account " + QString(wantedAccount).replace('&', "&&"));
    m_ui->chkAccount->setVisible(!wantedAccount.isEmpty() && anyWanted);
    connect(m_ui->chkAccount, &QCheckBox::toggled, this, [this, wantedAccount](bool only) {
        m_ui->List1->setFilterWords(only ? wantedAccount : QString());
    });
    m_ui->chkAccount->setChecked(m_ui->chkAccount->isVisibleTo(this));
    m_ui->List1->selectId(int(m_projects.indexOf(session().project.database)));
}

/// In a line each time; in a box only when it is not what the user was told before.
void frmSQLServerDatabases::tellLeftOut(const QStringList& leftOut) {
    m_ui->lblLeftOut->setVisible(!leftOut.isEmpty());
    m_ui->lblLeftOut->setText("Left out, without cost centres or corrupt: " + leftOut.join(", "));
    if (std::exchange(session().leftOutProjects, leftOut) == leftOut || leftOut.isEmpty()) return;
    messages().notice(
        parentWidget(),
        QString("Some imported projects appear to have no cost centres or are corrupt.  These are listed "
                "in the log file (%1).  Please contact your Administrator.")
            .arg(session().log.path()));
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
        selectAlone(*m_ui->List1, shown.index(row, 0));
        return;
    }
    const QStringList words = text.split(' ', Qt::SkipEmptyParts);
    for (int row = 0; row < shown.rowCount(); ++row) {
        QString texts;
        for (int column = 0; column < shown.columnCount(); ++column)
            texts += shown.index(row, column).data().toString() + '\n';
        if (!std::ranges::all_of(
                words, [&](const QString& word) { return texts.contains(word, Qt::CaseInsensitive); }))
            continue;
        selectAlone(*m_ui->List1, shown.index(row, 0));
        return;
    }
}

bool useProject(ScreenContext& context, QWidget* parent, const QString& database) {
    bool usable = false;
    guarded(
        context, parent,
        [&] {
            WaitCursor wait;
            const QString problem = takeProject(context.session, database);
            usable = problem.isEmpty();
            if (!usable) context.messages.notice(parent, problem);
        },
        {}, "frmSQLServerDatabases.OpenProject");
    return usable;
}

bool chooseProject(ScreenContext& context, QWidget* parent, const QString& wantedAccount) {
    const auto screen = openScreen<frmSQLServerDatabases>(
        context, parent, "Error loading the list of projects", wantedAccount);
    return screen && screen->result() == QDialog::Accepted
           && useProject(context, parent, screen->selectedProject());
}
