#include "app/frmOptions.h"

#include "addresses/frmEmailSettings.h"
#include "base/Session.h"
#include "base/modOptions.h"
#include "ui/Cursors.h"
#include "ui/DesktopNotices.h"
#include "ui/Labels.h"
#include "ui/Messages.h"
#include "ui/Palette.h"
#include "ui/SlotGuard.h"
#include "ui/openScreen.h"
#include "ui_frmOptions.h"

#include <QDir>

frmOptions::frmOptions(ScreenContext& context, QWidget* parent)
    : ScreenDialog(context, parent), m_ui(std::make_unique<Ui::frmOptions>()) {
    m_ui->setupUi(this);
    m_ui->lblNote->setText(
        "The output path is the path as seen by the server.\r\n"
        "These settings are managed by the Administrator and are shown here for viewing only.");
    uctFooter& footer = *m_ui->footer;
    footer.add("Email", "E-&mail", "mail-message", "Edit the e-mail settings and address book", this,
               &frmOptions::cmdEmail_Click);
    footer.addStretch();
    m_cmdSave =
        footer.add("Save", "&Save", "document-save", "Save the options", this, &frmOptions::cmdSave_Click);
    footer.add("Exit", "E&xit", "dialog-close", "Return to the previous screen", this, &frmOptions::reject);

    const auto clearNote = [this] { m_ui->header->setNote({}); };
    connect(m_ui->txtOutput, &QLineEdit::textEdited, this, clearNote);
    connect(m_ui->chkExcel, &QCheckBox::clicked, this, clearNote);
    connect(m_ui->chkCSV, &QCheckBox::clicked, this, clearNote);
    const bool mayChange = mayChangeOptions(session());
    setReadOnly(*m_ui->txtOutput, !mayChange);
    m_ui->chkExcel->setEnabled(mayChange);
    m_ui->chkCSV->setEnabled(mayChange);
    m_cmdSave->setVisible(mayChange);
    offerColours();
    m_ui->chkNotices->setChecked(DesktopNotices::areWanted());
    connect(m_ui->chkNotices, &QCheckBox::clicked, this, &DesktopNotices::setWanted);
    setMinimumWidth(fontMetrics().averageCharWidth() * 90);
}

frmOptions::~frmOptions() = default;

void frmOptions::offerColours() {
    QComboBox& colours = *m_ui->cmbColours;
    colours.addItem("As the desktop", "");
    colours.addItem("Light", "light");
    colours.addItem("Dark", "dark");
    colours.addItem("High contrast", "contrast");
    colours.setCurrentIndex(qMax(0, colours.findData(Palette::setting())));
    setTextColour(*m_ui->lblOwn, Palette::subtleText());
    setTextColour(*m_ui->lblColoursNote, Palette::subtleText());
    connect(&colours, &QComboBox::activated, this, [this] {
        Palette::setSetting(m_ui->cmbColours->currentData().toString());
        m_ui->lblColoursNote->setText("from the next start of the program on");
    });
}

int frmOptions::Setup() {
    const bool done = load([this] {
        ReadGlobalOptions(session());
        const GlobalOptions& options = session().options;
        m_ui->txtOutput->setText(options.outputPath);
        m_ui->chkExcel->setChecked(options.excel);
        m_ui->chkCSV->setChecked(options.csv);
    });
    return done ? 0 : -1;
}

bool frmOptions::hasChanges() const {
    const GlobalOptions& options = session().options;
    return m_ui->txtOutput->text() != options.outputPath || m_ui->chkExcel->isChecked() != options.excel
           || m_ui->chkCSV->isChecked() != options.csv;
}

void frmOptions::cmdSave_Click() {
    run([this] { save(); });
}

void frmOptions::save() {
    const GlobalOptions wanted{m_ui->txtOutput->text(), m_ui->chkExcel->isChecked(),
                               m_ui->chkCSV->isChecked()};
    if (!wanted.excel && !wanted.csv
        && !messages().ask(this, "Please note that you do not have a default output option selected.\r"
                                 "Do you wish to continue?"))
        return;
    // The server resolves a relative path elsewhere than this workstation.
    if (QDir::isRelativePath(wanted.outputPath) || !QDir(wanted.outputPath).exists()) {
        messages().notice(this, "Selected output path does not exist.");
        m_ui->txtOutput->setFocus();
        return;
    }
    WaitCursor wait;
    SaveGlobalOptions(session(), wanted);
    m_ui->header->setNote("Saved");
}

void frmOptions::cmdEmail_Click() {
    run([this] {
        if (const auto screen =
                setUpScreen<frmEmailSettings>(context(), this, "Error loading the e-mail settings"))
            screen->exec(); // what changes there does not show here
    });
}

bool frmOptions::mayClose() {
    return !hasChanges()
           || messages().ask(this, "Do you wish to cancel and lose any changes?", Messages::Plain,
                             "Cancel without saving?");
}
