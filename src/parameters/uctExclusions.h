#pragma once

#include "parameters/uctParameterGroup.h"

class QLabel;

/// The numbers that the template's reports leave out, edited on a screen of their own.
class uctExclusions : public uctParameterGroup {
    Q_OBJECT

public:
    uctExclusions(const EditedReport& report, QWidget* parent);
    void store(clsReportParameters&) const override {}

protected:
    void load(const clsReportParameters& parameters) override;

private:
    void cmdExclusions_Click();
    void showCount();

    QLabel* m_count;
};
