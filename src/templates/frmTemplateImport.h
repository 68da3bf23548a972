#pragma once

#include "templates/TemplateImport.h"
#include "ui/ScreenDialog.h"

#include <memory>

class QAction;
namespace Ui {
class frmTemplateImport;
}

/// Shows what a file of templates would add to the account of the current project, lets its user leave some
/// out, and adds the others.
class frmTemplateImport : public ScreenDialog {
    Q_OBJECT

public:
    explicit frmTemplateImport(ScreenContext& context, QWidget* parent = nullptr);
    ~frmTemplateImport() override;

    /// Reads the file; 0 on success.
    int Setup(const QString& path);
    /// The key of the first template that was added; -1 when none was.
    int firstId() const { return m_firstId; }

protected:
    bool tellsWhenCancelled() const override { return false; }

private slots:
    void cmdImport_Click();

private:
    void buildFooter();
    void leaveOut(bool leftOut);
    void toggle(int place);
    void showEntries();
    void updateActions();
    void showProgress(qsizetype done, qsizetype all);

    std::unique_ptr<Ui::frmTemplateImport> m_ui;
    QAction* m_cmdLeaveOut = nullptr;
    QAction* m_cmdTakeIn = nullptr;
    QAction* m_cmdImport = nullptr;
    std::unique_ptr<TemplateImport> m_import; ///< null until a file is read
    int m_firstId = -1;
};
