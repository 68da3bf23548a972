#pragma once

#include "ui/ScreenDialog.h"

#include <functional>
#include <memory>
#include <optional>

namespace Ui {
class frmManageTemplates;
}

/// Lists every template of the server with its use; leads to their editors and deletes them.
class frmManageTemplates : public ScreenDialog {
    Q_OBJECT

public:
    explicit frmManageTemplates(ScreenContext& context, QWidget* parent = nullptr);
    ~frmManageTemplates() override;

    /// Fills the list; 0 on success.
    int Setup();

signals:
    /// Schedules stand on a higher floor: whoever opened this screen makes one.
    void scheduleRequested(int templateId);

public slots:
    /// For the screens that edit a template and close.
    void CalledBack();

private slots:
    void cmdAdd_Click();
    void cmdEdit_Click();
    void cmdDelete_Click();
    void cmdDuplicate_Click();
    void cmdExport_Click();
    void cmdImport_Click();

private:
    void buildFooter();
    void fillList();
    void tellGone();
    std::optional<int> oneSelected(const QString& purpose);
    void editTemplate(int templateId);
    void openEditor(int templateId);

    std::unique_ptr<Ui::frmManageTemplates> m_ui;
};
