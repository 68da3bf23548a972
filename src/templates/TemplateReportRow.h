#pragma once

#include "db/Connection.h"
#include "reports/clsReports_Collection.h"
#include "templates/ColumnValues.h"

/// One report as a row of tblTemplate_Report.
namespace templateReportRow {

/// The rows of a template in the order in which they were saved.
RecordSet read(Connection& connection, int templateId);
/// Adds a report for each row of read(), under the key "ID" and the row's key. NULL gives the
/// default of a new report; a threshold that is no number keeps its text.
void addReports(const RecordSet& rows, const CurrentProject& project, clsReports_Collection& reports);

/// Of a text "08:30:00", "8:30 PM" or a whole datetime; invalid for any other.
QTime clockTime(const QString& text);

/// All but the keys. What the report does not offer in the current project is written empty or NULL.
/// Throws a Refusal when a text does not fit.
ColumnValues columns(clsReport& report);

} // namespace templateReportRow
