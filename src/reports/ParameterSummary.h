#pragma once

#include <QStringList>

class clsReportParameters;
struct CurrentProject;

/// What is selected in the parameter groups that `options` (an entry's options text) offers, as pieces
/// joined by ", ". Dates and times stand in the desktop's short forms, years in four digits.
QString parameterSummary(const clsReportParameters& parameters, const CurrentProject& project, int reportType,
                         const QString& options);

/// 1 = "Sunday" to 7 = "Saturday", as reports count the days.
QString dayName(int day);
/// The days of the week that are reported on: "Mon", "Tue".
QStringList selectedDays(const clsReportParameters& parameters);
/// "All Accounts", "Cost Centre 2 = Sales"; empty for a selection that this has no words for.
QString accountFilterText(const clsReportParameters& parameters, int reportType);
