#pragma once

#include <QIcon>

class clsReport;

/// The outputs of a report as a row of small marks, four places wide: workbook, printer, CSV file, e-mail. A
/// place is empty where the report has not that output.
QIcon outputIcons(clsReport& report);
/// How large the list shows them, for a height of its text.
QSize outputIconsSize(int height);
