#pragma once

#include <QString>

class clsReport;

/// "Output to Excel, CSV : Email Files:" followed by what is selected in the report's parameters.
QString reportSummary(clsReport& report);
