#pragma once

#include "reports/clsReports_Collection.h"

/// The parameters for which reports are made of `parameters`: where several service numbers, or several
/// cost centres of one level, are selected ("A|B"), a copy for each of them in their order; else the
/// given object alone.
QList<std::shared_ptr<clsReportParameters>>
onePerValue(const std::shared_ptr<clsReportParameters>& parameters);

/// How many reports are made of `parameters`.
qsizetype reportsMadeOf(const clsReportParameters& parameters);
/// The service number or cost centre that tells a report from its twins; empty without one.
QString distinctValue(const clsReportParameters& parameters);

/// Puts an edited report to its place, counted from 1, or at the end for the place 0. A report of several
/// values becomes one report for each at the end, which replace the edited one. Returns the position of
/// the report, or of the first of them.
int putReport(clsReports_Collection& reports, clsReport edited, int position);
/// Puts a report to a position, before the one that has it now.
void insertReport(clsReports_Collection& reports, clsReport report, int position);
/// Puts the reports at some positions, in ascending order, before the one at another, or at the end for
/// Count() + 1, and keeps their order. Returns the position of the first of them.
int moveReports(clsReports_Collection& reports, const QList<int>& positions, int before);
/// Adds a copy of the report at a position behind it.
void duplicateReport(clsReports_Collection& reports, int position);
