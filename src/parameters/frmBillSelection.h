#pragma once

#include "ui/ScreenDialog.h"

#include <memory>

namespace Ui {
class frmBillSelection;
}

/// Restricts a report to some of the current project's bills. The caller is told when the user
/// confirms, and reads the choice with BillIds().
class frmBillSelection : public ScreenDialog {
    Q_OBJECT

public:
    explicit frmBillSelection(ScreenContext& context, QWidget* parent = nullptr);
    ~frmBillSelection() override;

    /// Lists the bills, with those of `billIds` ("12,112"; empty for all) ticked; 0 on success.
    int Setup(const QString& billIds);
    /// The confirmed choice; empty for all bills.
    const QString& BillIds() const { return m_billIds; }

protected:
    bool mayClose() override;
    bool tellsWhenCancelled() const override { return false; }

private slots:
    void cmdOk_Click();

private:
    QString chosen() const;
    void tellMeaning();
    void takeChoice();

    std::unique_ptr<Ui::frmBillSelection> m_ui;
    QString m_before;
    QString m_billIds;
};
