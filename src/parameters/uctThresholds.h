#pragma once

#include "parameters/uctParameterGroup.h"

class QLabel;
class QLineEdit;

/// Cost and duration thresholds, a pair of boxes each.
class uctThresholds : public uctParameterGroup {
    Q_OBJECT

public:
    uctThresholds(const EditedReport& report, QWidget* parent);
    void store(clsReportParameters& parameters) const override;
    QWidget* boxAtFault() const override;

protected:
    void load(const clsReportParameters& parameters) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Pair {
        QLineEdit* lower;
        QLineEdit* higher;
        QString word; ///< "cost"

        QString fault() const;
    };
    Pair makePair(const QString& name, const QString& word);
    void leave(QLineEdit* left);
    void showProblem();

    Pair m_cost;
    Pair m_duration;
    QLineEdit* m_left = nullptr; ///< last
    QLabel* m_problem;
};
