#pragma once

#include <QDialog>
#include <QElapsedTimer>

/// The program's name and version, shown for a moment at start-up; a key or a click closes it sooner.
class frmSplashScreen : public QDialog {
    Q_OBJECT

public:
    explicit frmSplashScreen(QWidget* parent = nullptr);

    /// Shows it and returns at once: the start goes on behind it.
    void begin();
    /// Returns when it has been seen long enough, or was closed.
    void finish();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    QElapsedTimer m_shown;
};
