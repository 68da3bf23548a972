#include "parameters/frmBillSelection.h"

#include "base/Session.h"
#include "parameters/Bills.h"
#include "reports/ReportColumns.h"
#include "ui/Cursors.h"
#include "ui/Messages.h"
#include "ui/SlotGuard.h"
#include "ui/WindowSize.h"
#include "ui_frmBillSelection.h"

namespace {

std::vector<ListColumn> columns(bool withReference) {
    std::vector<ListColumn> columns{
        {"Bill"}, {"Account"}, {"Customer"}, {"Created"}, {"Bill Total (£)", ListColumn::Number}};
    if (withReference) columns.insert(columns.begin() + 3, {"Invoice Reference"});
    return columns;
}

QString key(int billId) {
    return 'A' + QString::number(billId);
}

} // namespace

frmBillSelection::frmBillSelection(ScreenContext& context, QWidget* parent)
    : ScreenDialog(context, parent), m_ui(std::make_unique<Ui::frmBillSelection>()) {
    m_ui->setupUi(this);
    m_ui->lblHint->setText(
        "To select or deselect a bill, click on the associated checkbox. \n"
        "Please note that deselecting all bills will default to all bills being included.");
    m_ui->lstBills->setEmptyText("This project holds no bills.");
    uctFooter& footer = *m_ui->footer;
    footer.addStretch();
    footer.add("Ok", "&OK", "dialog-ok-apply", "Restrict the report to the ticked bills", this,
               &frmBillSelection::cmdOk_Click);
    footer.add("Cancel", "&Cancel", "dialog-cancel", "Close and keep the former choice", this,
               &frmBillSelection::reject);
    connect(m_ui->lstBills, &uctCheckList::changed, this, &frmBillSelection::tellMeaning);
    resizeToText(*this, 110, 28);
}

frmBillSelection::~frmBillSelection() = default;

int frmBillSelection::Setup(const QString& billIds) {
    return load([&] {
        const Bills found = loadBills(session().db(), session().project.database);
        m_ui->header->setNote(session().project.database);
        std::vector<CheckListEntry> entries;
        QStringList ticked;
        const QString wanted = ',' + billIds + ',';
        for (const Bill& bill : found.bills) {
            QStringList texts{QString::number(bill.id), bill.account, bill.customer, bill.created,
                              bill.total};
            if (found.hasImports) texts.insert(3, bill.invoiceReference);
            entries.push_back({key(bill.id), texts});
            if (billIds.isEmpty() || wanted.contains(',' + texts.first() + ',')) ticked << key(bill.id);
        }
        m_ui->lstBills->setColumns(columns(found.hasImports));
        m_ui->lstBills->setEntries(std::move(entries), ticked);
        m_before = chosen();
        tellMeaning();
    })
               ? 0
               : -1;
}

/// Of the ticks for bills that are imported later.
void frmBillSelection::tellMeaning() {
    const qsizetype ticked = m_ui->lstBills->tickedKeys().size();
    const int all = m_ui->lstBills->count();
    const QString which =
        ticked == all ? QString("All %1 ticked").arg(all) : QString("%1 of %2 ticked").arg(ticked).arg(all);
    m_ui->lblMeaning->setText(
        ticked == 0 ? "None ticked: every bill is taken, also those that come later."
                    : which + ": bills that come later are left out. Untick all to take every bill.");
    m_ui->lblMeaning->setVisible(all > 0);
}

QString frmBillSelection::chosen() const {
    QStringList ids;
    for (const QString& each : m_ui->lstBills->tickedKeys()) ids << each.mid(1);
    return ids.join(',');
}

void frmBillSelection::cmdOk_Click() {
    run([this] { takeChoice(); });
}

void frmBillSelection::takeChoice() {
    const QString ids = chosen();
    if (ids.size() > reportColumnWidth("BillIds")) {
        messages().notice(
            this,
            QString("The identifiers of the %1 chosen bills take up %2 characters, and %3 can be stored. "
                    "Please choose fewer bills, or none to include all bills.")
                .arg(ids.count(',') + 1)
                .arg(ids.size())
                .arg(reportColumnWidth("BillIds")));
        return;
    }
    m_billIds = ids;
    callBackAndClose();
}

bool frmBillSelection::mayClose() {
    return chosen() == m_before || messages().ask(this, "Are you sure you want to cancel your changes?");
}
