#pragma once

#include "reports/clsReport.h"

#include <QStringList>

/// Every parameter as text, for comparing whole objects.
inline QStringList describe(const clsReportParameters& p) {
    QString days, bands;
    QStringList centres;
    for (int i = 1; i <= 7; ++i) days += p.DaySelected(i) ? 'Y' : 'N';
    for (int i = 1; i <= 23; ++i) bands += p.DistanceBandSelected(i) ? 'Y' : 'N';
    for (int i = 1; i <= 5; ++i) centres << p.CostCentre(i);
    return {"days " + days,
            "dates " + p.DateRangeStart().toString(Qt::ISODate) + ' '
                + p.DateRangeEnd().toString(Qt::ISODate),
            "times " + p.TimeRangeStart().toString() + ' ' + p.TimeRangeEnd().toString(),
            QString("overnight %1").arg(p.TimeRangeOvernight()),
            "bands " + bands,
            QString("cost %1 %2").arg(p.CostRangeMinimum(), p.CostRangeMaximum()),
            QString("amounts %1 %2").arg(p.CostRangeMinimumAmount()).arg(p.CostRangeMaximumAmount()),
            QString("duration %1 %2").arg(p.DurationRangeMinimum(), p.DurationRangeMaximum()),
            QString("amounts %1 %2").arg(p.DurationRangeMinimumAmount()).arg(p.DurationRangeMaximumAmount()),
            "service " + p.ServiceNumber(),
            "source bill " + p.SourceBillRef(),
            "cost centres " + centres.join(u'|'),
            QString("filters %1 %2").arg(p.CallFilter()).arg(p.AccountFilter()),
            "to " + p.CallsToNumber(),
            "not to " + p.CallsNotToNumber(),
            "from " + p.CallsFromNumber(),
            "repeat " + p.RepeatCallerThreshold(),
            "bill " + p.LinkvaleBillNumber(),
            QString("tagging %1 percentage %2").arg(p.CallTaggingSetting()).arg(p.CircuitsPercentage()),
            "circuit " + p.SelectedCircuitID(),
            "caption " + p.ReportCaption(),
            "header " + p.ReportHeader(),
            "user " + p.WPUserId(),
            "classes " + p.CallClassParams(),
            "bills " + p.BillIds(),
            "lines " + p.LineSelection(),
            QString("level %1").arg(p.CostCentreSummarySelectionLevel())};
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
