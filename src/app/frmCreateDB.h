#pragma once

#include "ui/ScreenContext.h"

#include <QDialog>
#include <memory>

namespace Ui {
class frmCreateDB;
}

/// Shown by the login on a server without the scheduler database: says what will be made and makes
/// it. Accepted when the database is there; otherwise the program ends.
class frmCreateDB : public QDialog {
    Q_OBJECT

public:
    explicit frmCreateDB(ScreenContext& context, QWidget* parent = nullptr);
    ~frmCreateDB() override;

    int exec() override;

private slots:
    void cmdCreate_Click();

private:
    void tell(const QString& step);
    void tellFailure(const QString& reason);

    ScreenContext& m_context;
    std::unique_ptr<Ui::frmCreateDB> m_ui;
};
