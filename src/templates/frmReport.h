#pragma once

#include "reports/clsReport.h"
#include "ui/ScreenDialog.h"

#include <functional>
#include <map>
#include <memory>
#include <optional>

class frmBillSelection;
class frmSelectReports;
class QCheckBox;
namespace Ui {
class frmReport;
}

/// Creates or changes one report: which one it is, its parameters and its outputs. It works on a copy;
/// the caller is told on Save only and reads the report with Report().
class frmReport : public ScreenDialog {
    Q_OBJECT

public:
    explicit frmReport(ScreenContext& context, QWidget* parent = nullptr);
    ~frmReport() override;

    /// Offers the types of report for the bill type; `report` is null for a new report. `templateId` says
    /// whose excluded numbers the report has: -1 for a template never saved. 0 on success.
    int Setup(int billType, const clsReport* report, int templateId);
    /// The report as saved.
    const clsReport& Report() const { return m_report; }

public slots:
    void CalledbackReport();
    void CalledbackParam();
    void fBillSelction_FormClosed();

protected:
    bool mayClose() override;
    bool tellsWhenCancelled() const override { return false; }

private slots:
    void cmbType_Click();
    void cmdReports_Click();
    void cmdParameters_Click();
    void cmdShowBillSelection_Click();
    void chkEmailFiles_Click();
    void cmdSave_Click();

private:
    void buildFooter();
    void connectControls();
    void fillTypes(int billType);
    void showReport();
    void showParameters();
    void showOutputs();
    void output_Click(QCheckBox* clicked);
    bool hasOutput() const;
    void takeOutputs();
    /// The first thing that stands against saving; empty when nothing does.
    QString firstFault() const;

    std::unique_ptr<Ui::frmReport> m_ui;
    clsReport m_report;
    std::map<int, clsReport> m_left; ///< by type: a type that is chosen again brings its report back
    int m_templateId = -1;
    std::unique_ptr<frmSelectReports> m_chooser;       ///< while it is open
    std::unique_ptr<frmBillSelection> m_billSelection; ///< while it is open
    bool m_loading = false;                            ///< changes of the controls are not the user's
    bool m_changed = false;
};
