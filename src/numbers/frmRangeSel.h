#pragma once

#include "numbers/NumberList.h"
#include "ui/ScreenDialog.h"

#include <memory>

namespace Ui {
class frmRangeSel;
}

/// Edits the list of telephone numbers of one parameter, in a working table. The caller is told when
/// the user confirms, and reads the list with numbers().
class frmRangeSel : public ScreenDialog {
    Q_OBJECT

public:
    explicit frmRangeSel(ScreenContext& context, QWidget* parent = nullptr);
    ~frmRangeSel() override;

    /// Shows the numbers of a list joined by ",", under a title ("Calls to"); 0 on success.
    int SetupNumbers(const QString& list, const QString& title);
    /// The confirmed numbers joined by ", ".
    const QString& numbers() const { return m_numbers; }

protected:
    bool mayClose() override;
    bool tellsWhenCancelled() const override { return false; }

private slots:
    void cmdOk_Click();
    void cmdLoad_Click();
    void cmdSave_Click();
    void cmdDelete_Click();

private:
    void deleteSelected();

    std::unique_ptr<Ui::frmRangeSel> m_ui;
    std::unique_ptr<NumberList> m_list;
    QStringList m_before;
    QString m_numbers;
};
