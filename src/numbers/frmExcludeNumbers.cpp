#include "numbers/frmExcludeNumbers.h"

#include "base/Session.h"
#include "ui/Cursors.h"
#include "ui/Messages.h"
#include "ui/SlotGuard.h"
#include "ui/WindowSize.h"
#include "ui_frmExcludeNumbers.h"

frmExcludeNumbers::frmExcludeNumbers(ScreenContext& context, QWidget* parent)
    : ScreenDialog(context, parent), m_ui(std::make_unique<Ui::frmExcludeNumbers>()) {
    m_ui->setupUi(this);
    m_ui->grid->setHint("Non Alphabetic characters are accepted ");
    m_ui->lblElsewhere->hide();
    uctFooter& footer = *m_ui->footer;
    footer.add("Load", "&Load", "document-open", "Replace the list by the numbers in a file", this,
               &frmExcludeNumbers::cmdLoad_Click);
    footer.add("Save", "&Save", "document-save", "Write the numbers to a file", this,
               &frmExcludeNumbers::cmdSave_Click);
    QAction* remove = footer.add("DeletedSelected", "&Delete", "edit-delete", "Delete the selected number",
                                 this, &frmExcludeNumbers::cmdDeletedSelected_Click);
    footer.setUsable(remove, false);
    connect(m_ui->grid, &uctNumberGrid::selectionChanged, this,
            [this, remove] { m_ui->footer->setUsable(remove, !m_ui->grid->selectedNumbers().isEmpty()); });
    footer.add("Delete", "Delet&e all", "edit-clear-all", "Delete all numbers of the list", this,
               &frmExcludeNumbers::cmdDelete_Click);
    footer.addStretch();
    footer.add("Ok", "&OK", "dialog-ok-apply", "Close and keep the list", this,
               &frmExcludeNumbers::cmdOk_Click);
    footer.add("Cancel", "&Cancel", "dialog-cancel", "Close and undo what was changed here", this,
               &frmExcludeNumbers::reject);
    connect(m_ui->grid, &uctNumberGrid::deletePressed, this, &frmExcludeNumbers::cmdDeletedSelected_Click);
    connect(m_ui->grid, &uctNumberGrid::numberAdded, this, [this](const QString& number) {
        run([&] { tellOfOthers(number); }, {}, "frmExcludeNumbers.DBGrid1_AfterUpdate");
    });
    resizeToText(*this, 76, 30);
}

frmExcludeNumbers::~frmExcludeNumbers() = default;

int frmExcludeNumbers::Setup(int templateId) {
    return load([&] {
        m_templateId = templateId;
        m_list = std::make_unique<ExcludedNumbers>(session().db(), templateId);
        m_ui->grid->attach(context(), *m_list, "frmExcludeNumbers");
        m_ui->grid->refresh();
    })
               ? 0
               : -1;
}

void frmExcludeNumbers::cmdOk_Click() {
    if (!m_ui->grid->takeTyped()) return;
    if (m_templateId == -1) session().newExclusions += m_list->added();
    callBackAndClose();
}

/// Beside the template's own row there may be others: that is allowed, but worth knowing.
void frmExcludeNumbers::tellOfOthers(const QString& number) {
    const int others = m_list->countEverywhere(number) - 1;
    m_ui->lblElsewhere->setText(
        others == 1 ? QString("%1 is excluded by one other template as well.").arg(number)
                    : QString("%1 is excluded by %2 other templates as well.").arg(number).arg(others));
    m_ui->lblElsewhere->setVisible(others > 0);
}

void frmExcludeNumbers::cmdLoad_Click() {
    run([this] { m_ui->grid->loadFile(); });
}

void frmExcludeNumbers::cmdSave_Click() {
    run([this] { m_ui->grid->saveFile(); });
}

void frmExcludeNumbers::cmdDelete_Click() {
    run([this] {
        if (!messages().ask(this, "Do you wish to delete all numbers from the Exclusion List ?")) return;
        WaitCursor wait;
        m_list->clear();
        m_ui->grid->refresh();
    });
}

void frmExcludeNumbers::cmdDeletedSelected_Click() {
    run([&] { deleteSelected(); });
}

/// Whoever answers No has had enough of the questions; what he agreed to before is deleted.
void frmExcludeNumbers::deleteSelected() {
    const QStringList selected = m_ui->grid->selectedNumbers();
    if (selected.isEmpty()) {
        messages().notice(this, "You must select a number to delete.");
        return;
    }
    QStringList agreed;
    for (const QString& number : selected) {
        if (!messages().ask(this,
                            QString("Do you wish to delete '%1' from the Exclusion List ?").arg(number)))
            break;
        agreed << number;
    }
    if (agreed.isEmpty()) return;
    m_list->removeAll(agreed);
    m_ui->grid->refresh();
}

bool frmExcludeNumbers::mayClose() {
    if (!m_list || (!m_list->isChanged() && !m_ui->grid->hasTyped())) return true;
    if (!messages().ask(this, "Are you sure you want to cancel your changes?")) return false;
    return run(
        [this] {
            WaitCursor wait;
            m_list->undo();
        },
        {}, "frmExcludeNumbers.cmdCancel_Click");
}
