#include "addresses/frmEmailSettings.h"

#include "addresses/AddressFile.h"
#include "addresses/EmailAddress.h"
#include "addresses/frmMailImport.h"
#include "addresses/frmMailSelection.h"
#include "addresses/modMailAddresses.h"
#include "base/MailOptions.h"
#include "base/Session.h"
#include "base/modOptions.h"
#include "ui/Cursors.h"
#include "ui/Labels.h"
#include "ui/Messages.h"
#include "ui/Palette.h"
#include "ui/SavePath.h"
#include "ui/SlotGuard.h"
#include "ui/WindowSize.h"
#include "ui/openScreen.h"
#include "ui_frmEmailSettings.h"

#include <QDir>
#include <QFile>

namespace {

enum Column { AccountColumn, CostCentreColumn, LevelColumn, EmailColumn };

constexpr qsizetype entriesNamed = 8; ///< in one message

QString inWords(const MailEntry& entry) {
    return QString("%1, %2, level %3, %4")
        .arg(entry.billAccount, entry.costCentre, entry.level, entry.emailAddress)
        .simplified();
}

/// One line for each of the first entries.
QString inLines(const QList<MailEntry>& entries, const QString& mark) {
    QStringList lines;
    for (const MailEntry& entry : entries.first(qMin(entries.size(), entriesNamed)))
        lines << mark + inWords(entry);
    if (entries.size() > entriesNamed) lines << QString("and %1 more").arg(entries.size() - entriesNamed);
    return lines.join('\n');
}

QString changesQuestion(const ForeignChanges& changes) {
    QStringList parts{"Another user changed the address book while you were editing it."};
    if (!changes.added.isEmpty()) parts << "Added:\n" + inLines(changes.added, "+ ");
    if (!changes.removed.isEmpty()) parts << "Deleted:\n" + inLines(changes.removed, "- ");
    parts << "Do you want to replace it by yours?";
    return parts.join("\n\n");
}

} // namespace

frmEmailSettings::frmEmailSettings(ScreenContext& context, QWidget* parent)
    : ScreenDialog(context, parent), m_ui(std::make_unique<Ui::frmEmailSettings>()) {
    m_ui->setupUi(this);
    m_ui->lblNotice->setText("* Please note *\n"
                             "E-mails created for sending Cost Centre sub projects\n"
                             "using Outlook will be saved for sending later due to\n"
                             "the possible size of the files.");
    for (QLabel* label : {m_ui->lblNotice, m_ui->lblCount, m_ui->lblOptionsNote})
        setTextColour(*label, Palette::subtleText());
    m_ui->prgSave->hide();
    m_ui->txtFind->setMinimumWidth(fontMetrics().averageCharWidth() * 30);
    uctListView& grid = *m_ui->MSFlexGrid1;
    grid.setColumns({{"Bill Account", ListColumn::Text, 18},
                     {"Cost Centre", ListColumn::Text, 30},
                     {"CC Level", ListColumn::Number, 10},
                     {"Email Address", ListColumn::Text, 42}},
                    "AddressBook");
    grid.setEmptyText("The address book is empty. Add an address, or import a file of addresses.");
    buildFooter();
    m_ui->txtFind->attach(grid);
    connect(m_ui->txtFind, &QLineEdit::textChanged, &grid, &uctListView::setFilterWords);
    connect(&grid, &uctListView::deletePressed, this, &frmEmailSettings::cmdDelete_Click);
    connect(m_ui->txtDefaultEmail, &QLineEdit::textChanged, this, &frmEmailSettings::updateControls);
    connect(m_ui->numMaxFileSize, &QSpinBox::valueChanged, this, &frmEmailSettings::updateControls);

    const bool mayChange = mayChangeOptions(session());
    setReadOnly(*m_ui->txtDefaultEmail, !mayChange);
    m_ui->numMaxFileSize->setEnabled(mayChange);
    m_ui->lblOptionsNote->setVisible(!mayChange);
    resizeToText(*this, 125, 34);
}

frmEmailSettings::~frmEmailSettings() = default;

void frmEmailSettings::buildFooter() {
    uctFooter& footer = *m_ui->footer;
    QAction* add = footer.add("Add", "&Add", "list-add", "Add an address of a cost centre", this,
                              &frmEmailSettings::cmdAdd_Click);
    add->setShortcut(QKeySequence::New);
    QAction* edit = footer.add("Edit", "E&dit", "document-edit", "Change the selected address", this,
                               &frmEmailSettings::cmdEdit_Click);
    QAction* remove = footer.add("Delete", "&Delete", "edit-delete", "Delete the selected addresses", this,
                                 &frmEmailSettings::cmdDelete_Click);
    footer.needSelection({m_ui->MSFlexGrid1}, {edit, remove});
    m_ui->MSFlexGrid1->offer({edit, remove, add}, edit, remove);
    connect(m_ui->MSFlexGrid1, &uctListView::rowActivated, this, &frmEmailSettings::cmdEdit_Click);
    footer.add("Import", "&Import", "document-import", "Add the addresses of a CSV file", this,
               &frmEmailSettings::cmdImport_Click);
    footer.add("Export", "&Export", "document-export", "Write all addresses into a CSV file", this,
               &frmEmailSettings::cmdExport_Click);
    footer.addStretch();
    m_cmdSave = footer.add("Save", "&Save", "document-save", "Save the changes", this,
                           &frmEmailSettings::cmdSave_Click);
    footer.add("Exit", "E&xit", "dialog-close", "Return to the previous screen", this,
               &frmEmailSettings::reject);
}

int frmEmailSettings::Setup() {
    const bool done = load([this] {
        m_defaultEmail = readDefaultEmail(session().db());
        m_maxFileSize = readMaxFileSize(session().db());
        m_asRead = readMailAddresses(session().db());
        m_book.setEntries(m_asRead);
        m_ui->txtDefaultEmail->setText(m_defaultEmail);
        m_ui->numMaxFileSize->setValue(m_maxFileSize);
        showBook();
        Sortthegrid();
        m_ui->MSFlexGrid1->setFocus();
    });
    return done ? 0 : -1;
}

void frmEmailSettings::showBook() {
    std::vector<ListRow> rows;
    rows.reserve(std::size_t(m_book.entries().size()));
    for (auto entry = m_book.entries().cbegin(); entry != m_book.entries().cend(); ++entry)
        rows.push_back(
            {entry.key(), {entry->billAccount, entry->costCentre, entry->level, entry->emailAddress}});
    m_ui->MSFlexGrid1->setRows(std::move(rows));
    const qsizetype count = m_book.entries().size();
    m_ui->lblCount->setText(count == 1 ? "1 entry" : QString("%L1 entries").arg(count));
    updateControls();
}

/// By the column that the user chose, else by the bill account.
void frmEmailSettings::Sortthegrid() {
    uctListView& grid = *m_ui->MSFlexGrid1;
    ListViewColumnSort(grid, qMax(int(AccountColumn), grid.sortedColumn()), true);
}

bool frmEmailSettings::optionsChanged() const {
    return m_ui->txtDefaultEmail->text().trimmed() != m_defaultEmail
           || m_ui->numMaxFileSize->value() != m_maxFileSize;
}

bool frmEmailSettings::CheckSaveState() const {
    return m_bookChanged || optionsChanged();
}

void frmEmailSettings::updateControls() {
    m_ui->footer->setUsable(m_cmdSave, CheckSaveState());
}

void frmEmailSettings::CalledBack() {
    run([this] {
        m_bookChanged = m_bookChanged || m_book.entries().size() != m_asRead.size();
        showBook();
        Sortthegrid();
    });
}

void frmEmailSettings::cmdAdd_Click() {
    run([this] { openScreen<frmMailSelection>(context(), this, "Error loading the cost centres", m_book); });
}

void frmEmailSettings::cmdImport_Click() {
    run([this] { openScreen<frmMailImport>(context(), this, {}, m_book); });
}

void frmEmailSettings::cmdEdit_Click() {
    run([this] {
        const int id = m_ui->MSFlexGrid1->selectedId().value();
        MailEntry entry = m_book.entries().value(id);
        const QString prompt = QString("The e-mail address of the cost centre %1").arg(entry.costCentre);
        const std::optional<QString> typed = messages().input(this, prompt, entry.emailAddress);
        if (!typed || typed->trimmed() == entry.emailAddress) return;
        entry.emailAddress = typed->trimmed();
        if (const QString problem = changeProblem(entry, id); !problem.isEmpty())
            return messages().notice(this, problem);
        m_book.remove(id);
        const int changed = m_book.AddEntrytoGrid(entry);
        m_bookChanged = true;
        showBook();
        m_ui->MSFlexGrid1->selectId(changed);
    });
}

/// What stands against an entry in place of another.
QString frmEmailSettings::changeProblem(const MailEntry& entry, int former) const {
    if (!isValidEmailAddress(entry.emailAddress)) return "You must enter a valid Email Address.";
    if (m_book.EntryAlreadyExists(entry) && entry.key() != m_book.entries().value(former).key())
        return QString("This cost centre already has the e-mail address %1 assigned to it.")
            .arg(entry.emailAddress);
    return problemOf(entry);
}

QString frmEmailSettings::deleteQuestion(const QList<int>& ids) const {
    if (ids.size() > 1) return QString("Do you wish to delete the %1 selected addresses?").arg(ids.size());
    const MailEntry entry = m_book.entries().value(ids.first());
    return QString("Do you wish to delete the address %1 for the Cost Centre entry %2?")
        .arg(entry.emailAddress, entry.costCentre);
}

void frmEmailSettings::cmdDelete_Click() {
    run([this] {
        const QList<int> ids = m_ui->MSFlexGrid1->selectedIds();
        if (ids.isEmpty()) {
            messages().notice(this, "Please select an entry to delete.", Messages::Information);
            return;
        }
        if (!messages().ask(this, deleteQuestion(ids))) return;
        for (const int id : ids) m_book.remove(id);
        m_bookChanged = true;
        showBook();
    });
}

/// The entries that a file can hold, when the user agrees to leave the others out; none when he does not.
QList<MailEntry> frmEmailSettings::exportable() {
    QList<MailEntry> fit, unfit;
    for (const MailEntry& entry : m_book.entries()) (survivesExport(entry) ? fit : unfit) << entry;
    if (unfit.isEmpty()) return fit;
    const QString reason =
        "These addresses would not read back, because a field is not valid or holds a line break:\n\n"
        + inLines(unfit, {}) + "\n\n";
    if (fit.isEmpty()) {
        messages().notice(this, reason + "There are no other addresses to export.");
        return {};
    }
    return messages().ask(this, reason + "Do you want to export the other addresses without them?")
               ? fit
               : QList<MailEntry>();
}

void frmEmailSettings::cmdExport_Click() {
    run([this] {
        if (m_book.entries().isEmpty()) {
            messages().notice(this, "No addresses found to export.");
            return;
        }
        const QList<MailEntry> entries = exportable();
        if (entries.isEmpty()) return;
        const QString path = pickSavePath(messages(), this, QDir::home().filePath("addresses.csv"),
                                          "Comma Separated Files (*.CSV);;View All Files (*.*)");
        if (path.isEmpty()) {
            messages().notice(this, "Export cancelled.");
            return;
        }
        if (QFile::exists(path) && !messages().ask(this, "File already exists, do you want to continue?"))
            return;
        {
            WaitCursor wait;
            writeAddressFile(path, entries);
        }
        messages().notice(this,
                          entries.size() == 1
                              ? "1 address has been exported to the file."
                              : QString("%1 addresses have been exported to the file.").arg(entries.size()));
    });
}

void frmEmailSettings::cmdSave_Click() {
    run([this] {
        const QString address = m_ui->txtDefaultEmail->text().trimmed();
        if (address != m_defaultEmail && !address.isEmpty() && !isValidEmailAddress(address)) {
            messages().notice(this, "You must enter a valid Email Address.");
            m_ui->txtDefaultEmail->setFocus();
            return;
        }
        const auto hideProgress = qScopeGuard([this] { m_ui->prgSave->hide(); });
        if (store()) messages().notice(this, "Changes have been saved.");
    });
}

void frmEmailSettings::showProgress(qsizetype entries) {
    constexpr qsizetype longBook = 2000;
    m_ui->prgSave->setRange(0, int(entries));
    m_ui->prgSave->setValue(0);
    m_ui->prgSave->setVisible(m_bookChanged && entries > longBook);
}

/// Options and book together. False when another user's changes are to stay.
bool frmEmailSettings::store() {
    const QList<MailEntry> book = m_book.list();
    showProgress(book.size());
    std::optional<ForeignChanges> foreign;
    {
        WaitCursor wait;
        Transaction transaction(session().db());
        if (optionsChanged())
            saveMailOptions(session().db(), m_ui->txtDefaultEmail->text().trimmed(),
                            m_ui->numMaxFileSize->value());
        if (m_bookChanged)
            foreign = saveMailAddresses(session().db(), book, m_asRead,
                                        [this](qsizetype written) { m_ui->prgSave->setValue(int(written)); });
        if (!foreign) transaction.commit();
    }
    if (foreign) {
        if (!messages().ask(this, changesQuestion(*foreign))) return false;
        m_asRead = foreign->stored;
        return store();
    }
    m_defaultEmail = m_ui->txtDefaultEmail->text().trimmed();
    m_maxFileSize = m_ui->numMaxFileSize->value();
    if (m_bookChanged) m_asRead = book;
    m_bookChanged = false;
    updateControls();
    return true;
}

bool frmEmailSettings::mayClose() {
    return !CheckSaveState()
           || messages().ask(this, "Are you sure you want to exit and cancel your changes?");
}
