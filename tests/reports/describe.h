#pragma once

#include "reports/clsReportParameters.h"

#include <QStringList>

/// Every parameter as text, for comparing whole objects.
inline QStringList describe(const clsReportParameters& p) {
    QStringList texts;
    const auto add = [&](const auto& value) { texts << QVariant::fromValue(value).toString(); };
    for (int i = 1; i <= 7; ++i) add(p.DaySelected(i));
    for (int i = 1; i <= 23; ++i) add(p.DistanceBandSelected(i));
    for (int i = 1; i <= 5; ++i) add(p.CostCentre(i));
    for (const QDate date : {p.DateRangeStart(), p.DateRangeEnd()}) add(date);
    for (const QTime time : {p.TimeRangeStart(), p.TimeRangeEnd()}) add(time);
    for (const qint64 number :
         {p.CostRangeMinimumAmount(), p.CostRangeMaximumAmount(), p.DurationRangeMinimumAmount(),
          p.DurationRangeMaximumAmount(), qint64(p.TimeRangeOvernight()), qint64(p.CallFilter()),
          qint64(p.AccountFilter()), qint64(p.CallTaggingSetting()), qint64(p.CircuitsPercentage()),
          qint64(p.CostCentreSummarySelectionLevel())})
        add(number);
    return texts << p.CostRangeMinimum() << p.CostRangeMaximum() << p.DurationRangeMinimum()
                 << p.DurationRangeMaximum() << p.ServiceNumber() << p.SourceBillRef() << p.CallsToNumber()
                 << p.CallsNotToNumber() << p.CallsFromNumber() << p.RepeatCallerThreshold()
                 << p.LinkvaleBillNumber() << p.SelectedCircuitID() << p.ReportCaption() << p.ReportHeader()
                 << p.WPUserId() << p.CallClassParams() << p.BillIds() << p.LineSelection();
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
