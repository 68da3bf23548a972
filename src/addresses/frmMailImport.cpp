#include "addresses/frmMailImport.h"

#include "addresses/AddressBook.h"
#include "base/Session.h"
#include "db/DbError.h"
#include "ui/Cursors.h"
#include "ui/Labels.h"
#include "ui/Messages.h"
#include "ui/Palette.h"
#include "ui/WindowSize.h"
#include "ui_frmMailImport.h"

#include <QDir>
#include <QFileInfo>

namespace {

QString statusText(const ImportRow& row) {
    switch (row.status) {
    case ImportRow::New:
        return "New";
    case ImportRow::Known:
        return "Known: " + row.reason;
    case ImportRow::Refused:
        return "Refused: " + row.reason;
    case ImportRow::BadLevel:
    case ImportRow::Unreadable:
        break;
    }
    return "Stops the import: " + row.reason;
}

QString stopText(const ImportRow& stopper) {
    return stopper.status == ImportRow::BadLevel
               ? "This import has been stopped.\nCost Centre levels should be between 1 and 5"
               : "There is an error with the data being imported.";
}

} // namespace

frmMailImport::frmMailImport(ScreenContext& context, QWidget* parent)
    : ScreenDialog(context, parent), m_ui(std::make_unique<Ui::frmMailImport>()) {
    m_ui->setupUi(this);
    m_ui->lstPreview->setColumns({{"Line", ListColumn::Number, 7},
                                  {"Bill Account", ListColumn::Text, 15},
                                  {"Cost Centre", ListColumn::Text, 24},
                                  {"CC Level", ListColumn::Number, 9},
                                  {"Email Address", ListColumn::Text, 32},
                                  {"Status", ListColumn::Text, 38}},
                                 "MailImport");
    m_ui->lstPreview->setEmptyText(
        "Choose a file to see what it holds. Nothing is added before you press Import.");
    ListViewColumnSort(*m_ui->lstPreview, 0, true);
    m_ui->prgImport->hide();
    m_ui->txtAccount->setText(session().project.unitabAccount);
    for (int level = 1; level <= 5; ++level) m_ui->cmbLevel->addItem(QString::number(level), level);
    buildFooter();
    offerLayouts();
    connect(m_ui->cmdOpen, &QPushButton::clicked, this, &frmMailImport::cmdOpen_Click);
    connect(m_ui->txtFile, &QLineEdit::returnPressed, this, &frmMailImport::readFile);
    connect(m_ui->cmbLayout, &QComboBox::activated, this, &frmMailImport::showLines);
    connect(m_ui->cmbLevel, &QComboBox::activated, this, &frmMailImport::showLines);
    connect(m_ui->txtAccount, &QLineEdit::editingFinished, this, &frmMailImport::showLines);
    resizeToText(*this, 130, 32);
}

frmMailImport::~frmMailImport() = default;

int frmMailImport::Setup(AddressBook& book) {
    m_book = &book;
    return 0;
}

void frmMailImport::buildFooter() {
    uctFooter& footer = *m_ui->footer;
    footer.addStretch();
    m_cmdImport =
        footer.add("Import", "&Import", "document-import", "Add the new addresses to the address book", this,
                   &frmMailImport::cmdImport_Click);
    footer.setUsable(m_cmdImport, false, "No addresses have been read.");
    footer.add("Cancel", "Ca&ncel", "dialog-cancel", "Close without adding anything", this,
               &frmMailImport::reject);
}

void frmMailImport::attempt(const std::function<void()>& body) {
    try {
        body();
    } catch (const std::exception& error) {
        session().log.write("frmmailimport.cmdimport", 1, QString::fromUtf8(error.what()));
        messages().notice(this, "Error importing data.  See error log.");
    }
    m_ui->prgImport->hide();
}

void frmMailImport::cmdOpen_Click() {
    const QString path = messages().openFile(this, {}, "All Files (*.csv)");
    if (path.isEmpty()) return;
    m_ui->txtFile->setText(QDir::toNativeSeparators(path));
    readFile();
}

void frmMailImport::readFile() {
    attempt([this] {
        const QString refusal = refusalOfFile();
        if (!refusal.isEmpty())
            messages().notice(this, refusal);
        else if (const ImportRow* stopper = countRows(m_rows).stopper)
            tellStop(*stopper);
        else
            m_ui->footer->button(m_cmdImport)->setFocus();
    });
}

/// Reads the file and shows what it holds; what was shown before is gone in any case. Why the file
/// cannot be used, or nothing.
QString frmMailImport::refusalOfFile() {
    WaitCursor wait;
    m_file = {};
    const auto showWhatWasRead = qScopeGuard([this] {
        offerLayouts();
        mapFile();
    });
    const QString path = QDir::fromNativeSeparators(m_ui->txtFile->text().trimmed());
    if (!QFileInfo(path).isFile()) return "File not found.";
    m_file = readAddressFile(path);
    if (m_file.hasUsableColumns()) return {};
    m_file = {};
    return "This file is Invalid.  The file must contain at least two columns and be comma separated.";
}

void frmMailImport::tellStop(const ImportRow& stopper) {
    messages().notice(this, stopText(stopper), Messages::Plain, {},
                      QString("Line %1: %2").arg(stopper.line).arg(stopper.reason));
}

void frmMailImport::offerLayouts() {
    m_layouts = m_file.hasUsableColumns() ? layoutsFor(m_file) : QList<AddressLayout>();
    m_ui->cmbLayout->clear();
    for (const AddressLayout& each : m_layouts) m_ui->cmbLayout->addItem(layoutText(each));
    m_ui->cmbLayout->setEnabled(!m_layouts.isEmpty());
}

AddressLayout frmMailImport::layout() const {
    return m_layouts.value(m_ui->cmbLayout->currentIndex());
}

MailEntry frmMailImport::defaults() const {
    return {m_ui->txtAccount->text().trimmed(), {}, m_ui->cmbLevel->currentData().toString(), {}};
}

void frmMailImport::showLines() {
    attempt([this] {
        WaitCursor wait;
        mapFile();
    });
}

void frmMailImport::mapFile() {
    const AddressLayout chosen = layout();
    m_mappedWith = defaults();
    m_rows = mapLines(m_file, chosen, m_mappedWith, *m_book, [this](qsizetype done) { showProgress(done); });
    const auto enable = [&](QLabel* label, QWidget* field, AddressField of) {
        const bool asked = m_layouts.isEmpty() || !chosen.contains(of);
        label->setEnabled(asked);
        field->setEnabled(asked);
    };
    enable(m_ui->lblAccount, m_ui->txtAccount, AddressField::BillAccount);
    enable(m_ui->lblLevel, m_ui->cmbLevel, AddressField::Level);
    fillPreview();
}

void frmMailImport::fillPreview() {
    std::vector<ListRow> rows;
    rows.reserve(std::size_t(m_rows.size()));
    for (const ImportRow& row : m_rows)
        rows.push_back({row.line,
                        {ListCell::number(row.line), row.entry.billAccount, row.entry.costCentre,
                         row.levelText, row.entry.emailAddress, statusText(row)}});
    m_ui->lstPreview->setRows(std::move(rows));

    const ImportCounts counts = countRows(m_rows);
    QString summary;
    if (counts.stopper)
        summary = QString("%1\nLine %2: %3")
                      .arg(stopText(*counts.stopper))
                      .arg(counts.stopper->line)
                      .arg(counts.stopper->reason);
    else if (!m_rows.isEmpty())
        summary = countsText(counts);
    else if (m_file.hasUsableColumns())
        summary = "The file holds no addresses.";
    if (!m_file.heading.isEmpty()) summary += "  (The first line is a heading.)";
    setTextColour(*m_ui->lblSummary,
                  counts.stopper ? Palette::problem() : palette().color(QPalette::WindowText));
    m_ui->lblSummary->setText(summary);
    m_ui->footer->setUsable(m_cmdImport, !m_rows.isEmpty() && !counts.stopper);
}

void frmMailImport::showProgress(qsizetype done) {
    m_ui->prgImport->setRange(0, int(m_file.lines.size()));
    m_ui->prgImport->setValue(int(done));
    m_ui->prgImport->show();
    session().turn();
}

void frmMailImport::cmdImport_Click() {
    attempt([this] {
        if (!(m_mappedWith == defaults())) mapFile(); // pressed while the account was being typed
        const ImportCounts counts = countRows(m_rows);
        if (counts.stopper) return tellStop(*counts.stopper);
        {
            WaitCursor wait;
            for (const ImportRow& row : m_rows)
                if (row.status == ImportRow::New) m_book->AddEntrytoGrid(row.entry);
        }
        const QString details =
            leftOutText(m_rows)
            + (m_file.heading.isEmpty() ? "" : "\nThe first line was taken for a heading.");
        messages().notice(this,
                          counts.added == 1
                              ? "1 new address has been added to the grid."
                              : QString("%1 new addresses have been added to the grid.").arg(counts.added),
                          Messages::Plain, {}, details.trimmed());
        callBackAndClose();
    });
}
