#pragma once

#include "numbers/ExcludedNumbers.h"
#include "ui/ScreenDialog.h"

#include <memory>

namespace Ui {
class frmExcludeNumbers;
}

/// Edits the numbers that a template's reports leave out. Every change is written at once; Cancel
/// undoes what was changed here, and leaves what others changed meanwhile.
class frmExcludeNumbers : public ScreenDialog {
    Q_OBJECT

public:
    explicit frmExcludeNumbers(ScreenContext& context, QWidget* parent = nullptr);
    ~frmExcludeNumbers() override;

    /// Shows a template's list, -1 standing for a template never saved; 0 on success.
    int Setup(int templateId);

protected:
    bool mayClose() override;
    bool tellsWhenCancelled() const override { return false; }

private slots:
    void cmdOk_Click();
    void cmdLoad_Click();
    void cmdSave_Click();
    void cmdDelete_Click();
    void cmdDeletedSelected_Click();

private:
    void deleteSelected();
    void tellOfOthers(const QString& number);

    std::unique_ptr<Ui::frmExcludeNumbers> m_ui;
    std::unique_ptr<ExcludedNumbers> m_list;
    int m_templateId = -1;
};
