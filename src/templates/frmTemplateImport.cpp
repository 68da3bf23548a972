#include "templates/frmTemplateImport.h"

#include "base/Session.h"
#include "ui/Cursors.h"
#include "ui/Messages.h"
#include "ui/WindowSize.h"
#include "ui/uctListView.h"
#include "ui_frmTemplateImport.h"

#include <QDir>
#include <QFileInfo>
#include <algorithm>

frmTemplateImport::frmTemplateImport(ScreenContext& context, QWidget* parent)
    : ScreenDialog(context, parent), m_ui(std::make_unique<Ui::frmTemplateImport>()) {
    m_ui->setupUi(this);
    m_ui->lstPreview->setColumns({{"Template Name", ListColumn::Text, 40},
                                  {"From Account", ListColumn::Text, 22},
                                  {"No of Reports", ListColumn::Number, 20},
                                  {"Becomes", ListColumn::Text, 36},
                                  {"Notes", ListColumn::Text, 50}},
                                 "TemplateImport");
    m_ui->lstPreview->setSelectionMode(QAbstractItemView::ExtendedSelection);
    connect(m_ui->lstPreview, &uctListView::rowActivated, this, &frmTemplateImport::toggle);
    connect(m_ui->lstPreview, &uctListView::deletePressed, this, [this] { leaveOut(true); });
    connect(m_ui->lstPreview, &uctListView::selectedIdChanged, this, &frmTemplateImport::updateActions);
    buildFooter();
    m_ui->prgImport->hide();
    resizeToText(*this, 150, 30);
}

frmTemplateImport::~frmTemplateImport() = default;

void frmTemplateImport::buildFooter() {
    uctFooter& footer = *m_ui->footer;
    m_cmdLeaveOut = footer.add("LeaveOut", "&Leave Out", "list-remove",
                               "Do not import the selected templates", this, [this] { leaveOut(true); });
    m_cmdTakeIn = footer.add("TakeIn", "&Take In", "list-add", "Import the selected templates after all",
                             this, [this] { leaveOut(false); });
    m_ui->lstPreview->offer({m_cmdTakeIn, m_cmdLeaveOut}, nullptr, m_cmdLeaveOut);
    footer.addStretch();
    m_cmdImport = footer.add("Import", "&Import", "document-import", "Add the templates to the account", this,
                             &frmTemplateImport::cmdImport_Click);
    footer.add("Cancel", "Ca&ncel", "dialog-cancel", "Close without adding anything", this,
               &frmTemplateImport::reject);
}

int frmTemplateImport::Setup(const QString& path) {
    const bool done = load([&] {
        m_import = std::make_unique<TemplateImport>(session(), templateFile::readFile(path));
        m_ui->lblFile->setText("The file: " + QFileInfo(path).fileName());
        m_ui->lblFile->setToolTip(QDir::toNativeSeparators(path));
        m_ui->lblTarget->setText(QString("Its templates are added to the account '%1' of the current project "
                                         "'%2', whatever account they come from.")
                                     .arg(m_import->account(), session().project.database));
        showEntries();
        m_ui->lstPreview->setFocus();
    });
    return done ? 0 : -1;
}

void frmTemplateImport::showEntries() {
    std::vector<ListRow> rows;
    for (const TemplateImport::Entry& entry : m_import->entries()) {
        const TemplateHeader& header = entry.content.header;
        rows.push_back({int(rows.size()),
                        {header.title, header.unitabAccount,
                         ListCell::number(int(entry.content.rows[FiledTemplate::Reports].size())),
                         TemplateImport::outcome(entry), entry.notes.join(' ')}});
    }
    m_ui->lblSummary->setText(
        QString("%1 of %2 will be imported.").arg(m_import->wantedCount()).arg(rows.size()));
    m_ui->lstPreview->setRows(std::move(rows));
    updateActions();
}

void frmTemplateImport::updateActions() {
    if (!m_import) return;
    const QList<int> places = m_ui->lstPreview->selectedIds();
    const auto isLeftOut = [this](int place) { return m_import->entries()[place].leftOut; };
    const QString nothing = "Nothing is selected to which this applies.";
    const QStringList notes = places.size() == 1 ? m_import->entries()[places.first()].notes : QStringList();
    m_ui->lblNotes->setText(notes.join('\n'));
    m_ui->lblNotes->setVisible(!notes.isEmpty());
    m_ui->footer->setUsable(m_cmdTakeIn, std::ranges::any_of(places, isLeftOut), nothing);
    m_ui->footer->setUsable(m_cmdLeaveOut, !std::ranges::all_of(places, isLeftOut), nothing);
    m_ui->footer->setUsable(m_cmdImport, m_import->wantedCount() > 0, "All templates are left out.");
}

void frmTemplateImport::leaveOut(bool leftOut) {
    m_import->setLeftOut(m_ui->lstPreview->selectedIds(), leftOut);
    showEntries();
}

void frmTemplateImport::toggle(int place) {
    leaveOut(!m_import->entries()[place].leftOut);
}

void frmTemplateImport::cmdImport_Click() {
    const bool done = run([this] {
        {
            WaitCursor wait;
            m_firstId =
                m_import->write([this](qsizetype written, qsizetype all) { showProgress(written, all); });
        }
        const qsizetype count = m_import->wantedCount();
        messages().notice(this, count == 1 ? QString("1 template has been imported.")
                                           : QString("%1 templates have been imported.").arg(count));
        callBackAndClose();
    });
    m_ui->prgImport->hide();
    if (!done) showEntries(); // other names may be free now
}

void frmTemplateImport::showProgress(qsizetype done, qsizetype all) {
    m_ui->prgImport->setRange(0, int(all));
    m_ui->prgImport->setValue(int(done));
    m_ui->prgImport->show();
    session().turn();
}
