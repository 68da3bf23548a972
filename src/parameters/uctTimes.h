#pragma once

#include "parameters/uctParameterGroup.h"

class QCheckBox;
class QTimeEdit;

/// Call hours, within a day or overnight.
class uctTimes : public uctParameterGroup {
    Q_OBJECT

public:
    uctTimes(const EditedReport& report, QWidget* parent);
    void store(clsReportParameters& parameters) const override;

protected:
    void load(const clsReportParameters& parameters) override;

private:
    QTimeEdit* m_start;
    QTimeEdit* m_end;
    QCheckBox* m_overnight;
};
