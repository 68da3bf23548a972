#pragma once

#include "ui/ScreenContext.h"

#include <QWidget>

class QLabel;
class QProgressBar;

/// Brings projects of an older version up to date before a schedule names them, and shows how far that is;
/// hidden otherwise.
class uctProjectUpdate : public QWidget {
    Q_OBJECT

public:
    explicit uctProjectUpdate(QWidget* parent = nullptr);

    /// Of the current project: its user is asked first. Throws DbError.
    void bringUpToDate(ScreenContext& context);

signals:
    void stepShown();

private:
    void showStep(int step, int steps);

    QLabel* m_text;
    QProgressBar* m_progress;
};
