#pragma once

#include <QDialog>

/// The program's name and version, shown for a moment at start-up; a key or a click closes it sooner.
class frmSplashScreen : public QDialog {
    Q_OBJECT

public:
    explicit frmSplashScreen(QWidget* parent = nullptr);

protected:
    void showEvent(QShowEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
};
