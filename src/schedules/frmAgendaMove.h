#pragma once

#include "base/WallClock.h"

#include <QDialog>

class QDateEdit;
class QTimeEdit;

/// Asks for another time of a run, for who does not drag.
class frmAgendaMove : public QDialog {
    Q_OBJECT

public:
    frmAgendaMove(const QString& title, const WallClock& when, QWidget* parent);

    WallClock when() const;

private:
    QDateEdit* m_day;
    QTimeEdit* m_time;
};
