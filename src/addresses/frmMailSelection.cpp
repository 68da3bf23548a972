#include "addresses/frmMailSelection.h"

#include "addresses/AddressBook.h"
#include "addresses/EmailAddress.h"
#include "base/Session.h"
#include "projects/frmSQLServerDatabases.h"
#include "templates/modSubProjects.h"
#include "ui/Cursors.h"
#include "ui/Labels.h"
#include "ui/Messages.h"
#include "ui/SlotGuard.h"
#include "ui/WindowSize.h"
#include "ui_frmMailSelection.h"

frmMailSelection::frmMailSelection(ScreenContext& context, QWidget* parent)
    : ScreenDialog(context, parent), m_ui(std::make_unique<Ui::frmMailSelection>()) {
    m_ui->setupUi(this);
    setReadOnly(*m_ui->txtProject, true);
    m_ui->txtProject->setPlaceholderText("No project is selected");
    m_ui->txtEmail->setPlaceholderText("name@company.com");
    for (int level = 1; level <= 5; ++level) m_ui->cmbLevel->addItem(QString("Level %1").arg(level), level);
    m_ui->lstCentres->setColumns({{"Cost Centre"}}, "MailCentres");
    m_ui->lstCentres->setHeaderHidden(true);

    uctFooter& footer = *m_ui->footer;
    QAction* cmdAdd = footer.add("Add", "&Add", "list-add", "Add the address to the address book", this,
                                 &frmMailSelection::cmdAdd_Click);
    footer.needSelection({m_ui->lstCentres}, {cmdAdd});
    footer.addStretch();
    footer.add("Close", "Clo&se", "dialog-close", "Return to the address book", this,
               &frmMailSelection::reject);
    connect(m_ui->cmdOpen, &QPushButton::clicked, this, &frmMailSelection::cmdOpen_Click);
    connect(m_ui->cmbLevel, &QComboBox::activated, this, &frmMailSelection::cmbLevel_Click);
    m_ui->txtFind->attach(*m_ui->lstCentres);
    connect(m_ui->txtFind, &QLineEdit::textChanged, m_ui->lstCentres, &uctListView::setFilterWords);
    connect(m_ui->txtFind, &QLineEdit::returnPressed, m_ui->txtFind, &uctFilterBox::goToList);
    connect(m_ui->lstCentres, &uctListView::rowActivated, m_ui->txtEmail, qOverload<>(&QWidget::setFocus));
    connect(m_ui->txtEmail, &QLineEdit::returnPressed, this, &frmMailSelection::cmdAdd_Click);
    resizeToText(*this, 85, 28);
}

frmMailSelection::~frmMailSelection() = default;

int frmMailSelection::Setup(AddressBook& book) {
    m_book = &book;
    const bool done = load([this] { fillCentres(); });
    if (session().project.database.isEmpty())
        m_ui->cmdOpen->setFocus();
    else
        m_ui->txtFind->setFocus(); // in the list, the keyboard would have chosen a cost centre already
    return done ? 0 : -1;
}

void frmMailSelection::fillCentres() {
    const CurrentProject& project = session().project;
    const bool chosen = !project.database.isEmpty();
    m_ui->txtProject->setText(
        chosen ? QString("%1 (bill account %2)").arg(project.database, project.unitabAccount) : QString());
    m_ui->lstCentres->setEmptyText(chosen ? "This level has no cost centres."
                                          : "Choose a project to see its cost centres.");
    ListViewUnselect(*m_ui->lstCentres); // those of another level or account must not be added to this one
    m_ui->lstCentres->setRows({});
    QStringList centres;
    if (chosen) {
        WaitCursor wait;
        centres = addressCostCentres(session(), m_ui->cmbLevel->currentData().toInt());
    }
    std::vector<ListRow> rows;
    for (const QString& centre : centres) rows.push_back({int(rows.size()), {centre}});
    m_ui->lstCentres->setRows(std::move(rows));
}

void frmMailSelection::cmdOpen_Click() {
    run([this] {
        if (chooseProject(context(), this)) fillCentres();
    });
}

void frmMailSelection::cmbLevel_Click() {
    run([this] { fillCentres(); });
}

void frmMailSelection::cmdAdd_Click() {
    run([this] { add(); });
}

void frmMailSelection::add() {
    const auto refuse = [this](const QString& text, QWidget* field) {
        messages().notice(this, text);
        field->setFocus();
    };
    const std::optional<int> centre = m_ui->lstCentres->selectedId();
    const QString address = m_ui->txtEmail->text().trimmed();
    if (!centre) return refuse("You must Select a Cost Centre.", m_ui->lstCentres);
    if (address.isEmpty()) return refuse("You must enter an Email Address.", m_ui->txtEmail);
    if (!isValidEmailAddress(address)) return refuse("You must enter a valid Email Address.", m_ui->txtEmail);
    const MailEntry entry{session().project.unitabAccount, m_ui->lstCentres->textOf(*centre, 0),
                          m_ui->cmbLevel->currentData().toString(), address};
    if (m_book->EntryAlreadyExists(entry)) {
        messages().notice(
            this, QString("This cost centre already has the e-mail address %1 assigned to it.").arg(address),
            Messages::Information);
        return;
    }
    const QString problem = problemOf(entry);
    if (!problem.isEmpty()) return refuse(problem, m_ui->txtEmail);
    m_book->AddEntrytoGrid(entry);
    messages().notice(this, "Entry has been added to Email List.");
    m_ui->txtEmail->clear();
    m_ui->txtEmail->setFocus();
}

/// An address that is still in its box was not added.
bool frmMailSelection::mayClose() {
    return m_ui->txtEmail->text().trimmed().isEmpty()
           || messages().ask(this, "Are you sure you want to cancel your changes?");
}
