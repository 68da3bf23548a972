#pragma once

#include "ui/ScreenContext.h"

#include <QDialog>
#include <memory>

namespace Ui {
class frmLogin;
}

/// Asks for server, user name and password and logs in; accepted once a login has succeeded, rejected
/// when the program is to end.
class frmLogin : public QDialog {
    Q_OBJECT

public:
    explicit frmLogin(ScreenContext& context, QWidget* parent = nullptr);
    ~frmLogin() override;

    /// Fills the boxes and presses OK without showing the screen. False when the login failed and the
    /// screen is to be shown; see also endProgram().
    bool logInUnseen(const QString& userName, const QString& password, const QString& server);
    /// Whether a check that failed ends the program.
    bool endProgram() const { return m_endProgram; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private slots:
    void cmdOk_Click();

private:
    void logIn();
    void offerToDropDatabase();

    ScreenContext& m_context;
    std::unique_ptr<Ui::frmLogin> m_ui;
    bool m_endProgram = false;
};
