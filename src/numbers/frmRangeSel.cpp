#include "numbers/frmRangeSel.h"

#include "base/Session.h"
#include "ui/Cursors.h"
#include "ui/Messages.h"
#include "ui/SlotGuard.h"
#include "ui/WindowSize.h"
#include "ui_frmRangeSel.h"

frmRangeSel::frmRangeSel(ScreenContext& context, QWidget* parent)
    : ScreenDialog(context, parent), m_ui(std::make_unique<Ui::frmRangeSel>()) {
    m_ui->setupUi(this);
    uctFooter& footer = *m_ui->footer;
    footer.add("Load", "&Load", "document-open", "Replace the list by the numbers in a file", this,
               &frmRangeSel::cmdLoad_Click);
    footer.add("Save", "&Save", "document-save", "Write the numbers to a file", this,
               &frmRangeSel::cmdSave_Click);
    footer.add("Delete", "&Delete all", "edit-clear-all", "Empty the list", this,
               &frmRangeSel::cmdDelete_Click);
    footer.addStretch();
    footer.add("Ok", "&OK", "dialog-ok-apply", "Use these numbers", this, &frmRangeSel::cmdOk_Click);
    footer.add("Cancel", "&Cancel", "dialog-cancel", "Close and keep the former list", this,
               &frmRangeSel::reject);
    connect(m_ui->grid, &uctNumberGrid::deletePressed, this,
            [this] { run([this] { deleteSelected(); }, {}, "frmRangeSel.DBGrid1_Delete"); });
    resizeToText(*this, 72, 28);
}

frmRangeSel::~frmRangeSel() = default;

int frmRangeSel::SetupNumbers(const QString& list, const QString& title) {
    m_ui->header->setTitle(title);
    setWindowTitle(title);
    NumberTable::LeftOut leftOut;
    const bool done = run([&] {
        WaitCursor wait;
        m_list = std::make_unique<NumberList>(session());
        m_ui->grid->attach(context(), *m_list, "frmRangeSel");
        m_list->CreateTblCallsTo();
        leftOut = m_list->SetupNumbers(list, m_ui->grid->progress());
        m_ui->grid->refresh();
        m_before = m_ui->grid->numbers();
    });
    if (!done) return -1;
    if (leftOut.total() > 0)
        messages().notice(
            this,
            QString("The list held numbers that cannot be used: %1.").arg(leftOut.text(m_list->maxLength())));
    return 0;
}

void frmRangeSel::cmdOk_Click() {
    if (!m_ui->grid->takeTyped()) return;
    QString joined;
    if (!run([&] {
            WaitCursor wait;
            joined = m_list->joined();
        }))
        return;
    if (joined.isEmpty()) {
        messages().notice(this, "No Telephone numbers have been entered.");
        return;
    }
    m_numbers = joined;
    callBackAndClose();
}

void frmRangeSel::cmdLoad_Click() {
    run([this] { m_ui->grid->loadFile(); });
}

void frmRangeSel::cmdSave_Click() {
    run([this] { m_ui->grid->saveFile(); });
}

void frmRangeSel::cmdDelete_Click() {
    run([this] {
        m_list->clear();
        m_ui->grid->refresh();
    });
}

void frmRangeSel::deleteSelected() {
    WaitCursor wait;
    m_list->removeAll(m_ui->grid->selectedNumbers());
    m_ui->grid->refresh();
}

bool frmRangeSel::mayClose() {
    return (!m_ui->grid->hasTyped() && m_ui->grid->holdsJust(m_before))
           || messages().ask(this, "Are you sure you want to cancel your changes?");
}
