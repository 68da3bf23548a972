#pragma once

#include "parameters/uctParameterGroup.h"

class QButtonGroup;

/// From which kinds of line the report takes calls, of those that its catalogue entry runs for.
class uctLineChoice : public uctParameterGroup {
    Q_OBJECT

public:
    uctLineChoice(const EditedReport& report, QWidget* parent);
    void store(clsReportParameters& parameters) const override;
    /// One of enum CallFilter.
    int callFilter() const;

signals:
    void callFilterChanged(int callFilter); ///< by the user

protected:
    void load(const clsReportParameters& parameters) override;

private:
    QButtonGroup* m_optMob; ///< the buttons' numbers are the call filters
};
