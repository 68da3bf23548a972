#pragma once

#include "db/ColumnText.h"
#include "reports/clsReport.h"

#include <QVariant>
#include <optional>
#include <span>

/// A column of tblTemplate_Report, or several that are numbered from 1 ("Day1" … "Day7"): which value of a
/// report it holds, and of what kind and size. Everything that reads or writes report rows goes by this
/// table.
struct ReportColumn {
    enum Kind { Flag, Number, Date, Time, Text };

    const char* name; ///< of numbered columns without the number
    Kind kind;
    /// The value to be written, of a type that suits the kind; invalid for NULL. `number` is 0 for a single
    /// column. Null for a column that is only read.
    QVariant (*get)(clsReport& report, int number);
    /// Takes a value that was read; never called for NULL, which leaves what a new report has.
    void (*set)(clsReport& report, int number, const QVariant& value);
    int count = 0;          ///< of numbered columns; 0 for a single one
    const char* label = ""; ///< of a text, as refusals name it
    int width = 0;          ///< letters of a text that fit; 0 for any number
    CodePage codePage = CodePage::Unicode;
    bool fansOut = false; ///< while it is edited, several values joined by "|" may stand for a report each
    std::optional<int> highestCode = {}; ///< of codes, which begin at 0; nothing for any number

    QString columnName(int number) const;
    QString fieldLabel(int number) const;
};

/// In the order in which they are read. The two filters come first: setting them clears bands, service number
/// and cost centres. What a report is comes before what depends on it.
std::span<const ReportColumn> reportColumns();

/// Calls `visit(column, number)` for each column; number is 0 for a single one.
template <class Visit>
void forEachReportColumn(Visit visit) {
    for (const ReportColumn& column : reportColumns())
        for (int number = column.count ? 1 : 0; number <= column.count; ++number) visit(column, number);
}

/// Letters that fit a text column of this name.
int reportColumnWidth(const char* name);
