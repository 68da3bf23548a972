#pragma once

#include "ui/Cursors.h"

#include <QDialog>

class QLabel;
class QPushButton;

/// Says for what the program waits, and for how long already. It takes the keyboard from nobody: what a user
/// goes on typing is kept for the screen, and Esc stops from wherever he is.
class frmWaiting : public QDialog {
    Q_OBJECT

public:
    frmWaiting(const QString& server, QWidget* parent);

    void showProgress(int seconds, bool stopping);

signals:
    void stopPressed();

protected:
    void reject() override;

private:
    CursorScope m_pointer{Qt::BusyCursor};
    QString m_server;
    QLabel* m_text;
    QPushButton* m_stop;
};
