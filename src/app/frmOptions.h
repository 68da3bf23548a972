#pragma once

#include "ui/ScreenDialog.h"

#include <memory>

class QAction;
namespace Ui {
class frmOptions;
}

/// The server-wide options: the output folder as the server sees it, and the outputs of new reports.
class frmOptions : public ScreenDialog {
    Q_OBJECT

public:
    explicit frmOptions(ScreenContext& context, QWidget* parent = nullptr);
    ~frmOptions() override;

    /// Reads the options into the screen; 0 on success.
    int Setup();

protected:
    bool mayClose() override;

private slots:
    void cmdSave_Click();
    void cmdEmail_Click();

private:
    void offerColours();
    void save();
    bool hasChanges() const;

    std::unique_ptr<Ui::frmOptions> m_ui;
    QAction* m_cmdSave;
};
