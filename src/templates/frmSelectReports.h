#pragma once

#include "ui/ScreenDialog.h"

#include <memory>

struct CatalogueEntry;
namespace Ui {
class frmSelectReports;
}

/// Chooses a report from the catalogue and says what each one offers. The caller is told of a choice
/// and reads it with chosen().
class frmSelectReports : public ScreenDialog {
    Q_OBJECT

public:
    explicit frmSelectReports(ScreenContext& context, QWidget* parent = nullptr);
    ~frmSelectReports() override;

    /// Lists the reports of a type that the current project offers, the one of this identifier
    /// selected; 0 when there are any.
    int Setup(int reportType, int reportSubType);
    /// Null until the user has chosen.
    const CatalogueEntry* chosen() const { return m_chosen; }

    void reject() override { QDialog::reject(); } // the caller is told of a choice only

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private slots:
    void cmdSelect_Click();
    void txtFilter_Change(const QString& words);
    void lstReports_ItemClick();

private:
    const CatalogueEntry* selectedEntry() const;

    std::unique_ptr<Ui::frmSelectReports> m_ui;
    int m_reportType = 0;
    const CatalogueEntry* m_chosen = nullptr;
};
