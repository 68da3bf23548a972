#pragma once

#include "reports/ReportColumns.h"

#include <QStringList>

/// Every stored value of a report and what only some reports store, as text, for comparing whole objects.
inline QStringList describe(clsReport report) {
    QStringList texts;
    report.setReportType(0); // whatever the report offers
    report.setReportSubType(0);
    forEachReportColumn([&](const ReportColumn& column, int number) {
        if (column.get) texts << column.get(report, number).toString();
    });
    const clsReportParameters& p = *report.Parameters();
    for (const qint64 number : {p.CostRangeMinimumAmount(), p.CostRangeMaximumAmount(),
                                p.DurationRangeMinimumAmount(), p.DurationRangeMaximumAmount()})
        texts << QString::number(number);
    return texts << p.CallsToNumber() << p.CallsNotToNumber() << p.CallsFromNumber()
                 << p.RepeatCallerThreshold() << p.LinkvaleBillNumber()
                 << QString::number(p.CircuitsPercentage()) << p.SelectedCircuitID();
}

inline QStringList describe(const clsReportParameters& parameters) {
    static const CurrentProject noProject;
    clsReport report(noProject);
    report.setParameters(std::make_shared<clsReportParameters>(parameters));
    return describe(report);
}

/// Gives every parameter that all reports store a value other than its default. Texts hold what breaks
/// careless statements.
inline void fill(clsReportParameters& p) {
    p.setCallFilter(4);
    p.setAccountFilter(5);
    p.setDaySelected(1, false);
    p.setDaySelected(7, false);
    p.setDateRangeStart(QDate(2008, 2, 29));
    p.setDateRangeEnd(QDate(2026, 12, 31));
    p.setTimeRangeStart(QTime(18, 5, 9));
    p.setTimeRangeEnd(QTime(8, 0));
    p.setTimeRangeOvernight(true);
    for (const int band : {1, 15, 17, 18, 23}) p.setDistanceBandSelected(band, true);
    p.setCostRangeMinimum(".5");
    p.setCostRangeMaximum("100.25");
    p.setDurationRangeMinimum("1");
    p.setDurationRangeMaximum("60");
    p.setServiceNumber("O'Brien \"x\" {} Ω");
    p.setSourceBillRef("';DROP TABLE tblTemplate--");
    for (int level = 1; level <= 5; ++level) p.setCostCentre(level, QString("Zürich %1").arg(level));
    p.setReportCaption("Łódź 'caption'");
    p.setReportHeader("first\r\nsecond\tline 😀");
    p.setWPUserId("user€");
    p.setCallClassParams("A|B");
    p.setBillIds("1,2,3");
    p.setLineSelection("01234|05678");
    p.setCostCentreSummarySelectionLevel(3);
    p.setCallTaggingSetting(2);
}
