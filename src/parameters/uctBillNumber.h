#pragma once

#include "parameters/uctParameterGroup.h"

class QComboBox;
class QLineEdit;

/// The bill number, which begins with the letter of the bill's type. No number means all bills.
class uctBillNumber : public uctParameterGroup {
    Q_OBJECT

public:
    uctBillNumber(const EditedReport& report, QWidget* parent);
    void store(clsReportParameters& parameters) const override;

protected:
    void load(const clsReportParameters& parameters) override;

private:
    QComboBox* m_type;
    QLineEdit* m_number;
};
