#pragma once

#include "parameters/uctParameterGroup.h"

class uctCheckList;

/// Classes of mobile calls; none chosen means all.
class uctCallClasses : public uctParameterGroup {
    Q_OBJECT

public:
    uctCallClasses(const EditedReport& report, QWidget* parent);
    void store(clsReportParameters& parameters) const override;

protected:
    void load(const clsReportParameters& parameters) override;

private:
    uctCheckList* m_list;
};
