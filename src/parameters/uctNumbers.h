#pragma once

#include "parameters/uctParameterGroup.h"

class QLabel;

/// The numbers that a report on calls to, from or not to some numbers is about. They are edited on a
/// screen of their own, straight in the editor's working copy.
class uctNumbers : public uctParameterGroup {
    Q_OBJECT

public:
    /// Whether the report is one of these three.
    static bool isFor(const clsReport& report);
    uctNumbers(const EditedReport& report, QWidget* parent);
    void store(clsReportParameters&) const override {}

signals:
    void editRequested();

protected:
    void load(const clsReportParameters& parameters) override;

private:
    QLabel* m_numbers;
};

/// The list of numbers that belongs to the report.
const QString& numbersOf(const clsReport& report, const clsReportParameters& parameters);
