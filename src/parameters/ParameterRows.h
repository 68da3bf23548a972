#pragma once

#include "reports/clsReport.h"

/// One parameter of a report in words.
struct ParameterRow {
    QString caption;
    QString value;
    bool differs = false; ///< from what a new report starts with
};

/// The parameters that a report offers, in the order of the parameter editor. `defaults` are those that
/// a new report of its kind starts with.
QList<ParameterRow> parameterRows(const clsReport& report, const clsReportParameters& defaults,
                                  const CurrentProject& project);
