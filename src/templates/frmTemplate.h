#pragma once

#include "templates/clsTemplate.h"
#include "ui/ScreenDialog.h"

#include <functional>
#include <map>
#include <memory>
#include <vector>

class QAction;
class frmReport;
namespace Ui {
class frmTemplate;
}

/// Edits an ordinary template: its name, its reports and their order, and whose dates they cover.
/// Nothing is written before it is saved.
class frmTemplate : public ScreenDialog {
    Q_OBJECT

public:
    explicit frmTemplate(ScreenContext& context, QWidget* parent = nullptr);
    ~frmTemplate() override;

    /// A negative ID prepares a new template for the current project; 0 on success.
    int Setup(int templateId);
    /// Of the template as last saved; -1 for one never saved.
    int ID() const { return m_template.ID(); }

public slots:
    /// For the report editor, which has saved a report.
    void CalledBack();

protected:
    bool mayClose() override;

private slots:
    void cmdOpen_Click();
    void cmdAdd_Click();
    void cmdEdit_Click();
    void cmdDelete_Click();
    void cmdDuplicate_Click();
    void cmdSave_Click();
    void cmdSaveAs_Click();
    void txtTemplate_Change(const QString& title);
    void optDate_Click();
    void chkCSVRepDefs_Click(bool ticked);

private:
    void buildFooter();
    void connectControls();
    void showTemplate();
    void showAccount();
    void startNewTemplate();
    void undoDelete();
    /// Fills the list anew and selects the reports at positions, as far as there are so many.
    void showReports(QList<int> selected);
    void updateButtons();
    bool ensureProject();
    void editReport(int position);
    void moveSelected(int before);

    bool checkOutputs();
    QString askNewTitle();
    clsTemplate::SaveResult store(const QString& newTitle);
    void tell(const QString& text);
    bool confirm(const QString& question);
    void forgetExcludedNumbers();

    std::unique_ptr<Ui::frmTemplate> m_ui;
    QAction* m_cmdDuplicate = nullptr;
    QAction* m_cmdUp = nullptr;
    QAction* m_cmdDown = nullptr;
    QAction* m_cmdSaveAs = nullptr;
    QAction* m_undo = nullptr;
    std::vector<std::map<int, clsReport>> m_removed; ///< by their positions, for each deletion
    clsTemplate m_template;
    std::unique_ptr<frmReport> m_reportEditor; ///< while it is open
    int m_edited = 0;                          ///< the position of the report in it; 0 for a new one
    QString m_newTitle;                        ///< as typed for the last save-as, which was refused
    bool m_ready = false;                      ///< changes of the controls are the user's
};
