#pragma once

#include "base/CurrentProject.h"
#include "reports/DistanceBands.h"

#include <QString>
#include <QTime>
#include <array>
#include <memory>

/// Every parameter that a report may have, whichever of them the report offers. Indexes count from 1;
/// an index out of range throws std::out_of_range and changes nothing.
class clsReportParameters {
public:
    /// The project must outlive the object.
    explicit clsReportParameters(const CurrentProject& project);

    /// The selected lines or handsets, joined by "|".
    const QString& LineSelection() const { return m_lineSelection; }
    void setLineSelection(const QString& lines) { m_lineSelection = lines; }

    /// Puts the defaults back, except for LineSelection, CallClassParams and
    /// CostCentreSummarySelectionLevel, which are kept.
    void Clear();
    static int DistanceBandByName(const QString& name) { return distanceBands::byName(name); }
    static QString DistanceBandToName(int index) { return distanceBands::name(index); }
    /// A copy with the dates in force now: while the project's default dates are used, it holds those.
    std::shared_ptr<clsReportParameters> Clone() const;
    /// One line that says what is selected in the parameter groups that `options`, the options of a
    /// catalogue entry, offers.
    QString ParameterSummary(int reportType, const QString& options) const;
    /// True from the start: nothing resets it.
    bool HasChanged() const { return m_hasChanged; }

    /// 1 = Sunday to 7 = Saturday.
    bool DaySelected(int day) const;
    void setDaySelected(int day, bool selected);
    /// The stored date, or the project's default date while those are used and known.
    QDate DateRangeStart() const;
    void setDateRangeStart(QDate date) { change(m_dateRangeStart, date); }
    QDate DateRangeEnd() const;
    void setDateRangeEnd(QDate date) { change(m_dateRangeEnd, date); }
    QTime TimeRangeStart() const { return m_timeRangeStart; }
    void setTimeRangeStart(QTime time) { change(m_timeRangeStart, time); }
    QTime TimeRangeEnd() const { return m_timeRangeEnd; }
    void setTimeRangeEnd(QTime time) { change(m_timeRangeEnd, time); }
    /// The hours run from TimeRangeStart on one day to TimeRangeEnd on the next.
    bool TimeRangeOvernight() const { return m_timeRangeOvernight; }
    void setTimeRangeOvernight(bool overnight) { change(m_timeRangeOvernight, overnight); }
    bool DistanceBandSelected(int band) const;
    void setDistanceBandSelected(int band, bool selected);

    /// Pounds, as typed. The setters keep any text, and throw std::invalid_argument afterwards when
    /// thresholdAmount() knows none for it; its amount then stays as it was.
    const QString& CostRangeMinimum() const { return m_costRangeMinimum.text; }
    void setCostRangeMinimum(const QString& text) { changeThreshold(m_costRangeMinimum, text); }
    const QString& CostRangeMaximum() const { return m_costRangeMaximum.text; }
    void setCostRangeMaximum(const QString& text) { changeThreshold(m_costRangeMaximum, text); }
    /// Minutes, as typed; like the costs.
    const QString& DurationRangeMinimum() const { return m_durationRangeMinimum.text; }
    void setDurationRangeMinimum(const QString& text) { changeThreshold(m_durationRangeMinimum, text); }
    const QString& DurationRangeMaximum() const { return m_durationRangeMaximum.text; }
    void setDurationRangeMaximum(const QString& text) { changeThreshold(m_durationRangeMaximum, text); }
    /// The thresholds in ten-thousandths; 0 for an empty text.
    qint64 CostRangeMinimumAmount() const { return m_costRangeMinimum.amount; }
    qint64 CostRangeMaximumAmount() const { return m_costRangeMaximum.amount; }
    qint64 DurationRangeMinimumAmount() const { return m_durationRangeMinimum.amount; }
    qint64 DurationRangeMaximumAmount() const { return m_durationRangeMaximum.amount; }

    /// Used when AccountFilter is OneServiceNumber; a circuit identifier for private circuits.
    const QString& ServiceNumber() const { return m_serviceNumber; }
    const QString& SourceBillRef() const { return m_sourceBillRef; }
    void setServiceNumber(const QString& number) { change(m_serviceNumber, number); }
    void setSourceBillRef(const QString& reference) { change(m_sourceBillRef, reference); }
    /// The cost centre chosen at one of the five levels.
    const QString& CostCentre(int level) const;
    void setCostCentre(int level, const QString& costCentre);
    /// One of enum CallFilter. Setting it, even to the same value, unselects every distance band.
    int CallFilter() const { return m_callFilter; }
    void setCallFilter(int filter);
    /// One of enum AccountFilter. A new value empties ServiceNumber and the cost centres.
    int AccountFilter() const { return m_accountFilter; }
    void setAccountFilter(int filter);
    /// Numbers joined by ", ".
    const QString& CallsToNumber() const { return m_callsToNumber; }
    void setCallsToNumber(const QString& numbers) { change(m_callsToNumber, numbers); }
    const QString& CallsNotToNumber() const { return m_callsNotToNumber; }
    void setCallsNotToNumber(const QString& numbers) { change(m_callsNotToNumber, numbers); }
    const QString& CallsFromNumber() const { return m_callsFromNumber; }
    void setCallsFromNumber(const QString& numbers) { change(m_callsFromNumber, numbers); }
    const QString& RepeatCallerThreshold() const { return m_repeatCallerThreshold; }
    void setRepeatCallerThreshold(const QString& threshold) { change(m_repeatCallerThreshold, threshold); }
    /// Empty for all bills.
    const QString& LinkvaleBillNumber() const { return m_linkvaleBillNumber; }
    void setLinkvaleBillNumber(const QString& number) { change(m_linkvaleBillNumber, number); }
    int CallTaggingSetting() const { return m_callTaggingSetting; }
    void setCallTaggingSetting(int setting) { m_callTaggingSetting = setting; }
    quint8 CircuitsPercentage() const { return m_circuitsPercentage; }
    void setCircuitsPercentage(quint8 percentage) { change(m_circuitsPercentage, percentage); }
    const QString& SelectedCircuitID() const { return m_selectedCircuitID; }
    void setSelectedCircuitID(const QString& circuit) { change(m_selectedCircuitID, circuit); }
    const QString& ReportCaption() const { return m_reportCaption; }
    void setReportCaption(const QString& caption) { change(m_reportCaption, caption); }
    void setReportHeader(const QString& header) { m_reportHeader = header; }
    const QString& ReportHeader() const { return m_reportHeader; }
    const QString& WPUserId() const { return m_wpUserId; }
    void setWPUserId(const QString& userId);
    const QString& CallClassParams() const { return m_callClassParams; }
    void setCallClassParams(const QString& classes) { change(m_callClassParams, classes); }
    /// Bill identifiers joined by ","; empty for all bills.
    const QString& BillIds() const { return m_billIds; }
    void setBillIds(const QString& bills) { change(m_billIds, bills); }
    qint16 CostCentreSummarySelectionLevel() const { return m_costCentreSummarySelectionLevel; }
    void setCostCentreSummarySelectionLevel(qint16 level) { m_costCentreSummarySelectionLevel = level; }

private:
    struct Threshold {
        QString text;
        qint64 amount = 0;
    };

    template <class T>
    void change(T& field, const T& value) {
        field = value;
        m_hasChanged = true;
    }
    void changeThreshold(Threshold& threshold, const QString& text);

    const CurrentProject* m_project;
    QString m_lineSelection;
    std::array<bool, 7> m_daySelected;
    QDate m_dateRangeStart;
    QDate m_dateRangeEnd;
    QTime m_timeRangeStart;
    QTime m_timeRangeEnd;
    bool m_timeRangeOvernight;
    std::array<bool, distanceBands::Count> m_distanceBandSelected;
    Threshold m_costRangeMinimum;
    Threshold m_costRangeMaximum;
    Threshold m_durationRangeMinimum;
    Threshold m_durationRangeMaximum;
    QString m_serviceNumber;
    QString m_sourceBillRef;
    std::array<QString, 5> m_costCentre;
    int m_callFilter;
    int m_accountFilter;
    QString m_callsToNumber;
    QString m_callsNotToNumber;
    QString m_callsFromNumber;
    QString m_repeatCallerThreshold;
    QString m_linkvaleBillNumber;
    int m_callTaggingSetting;
    quint8 m_circuitsPercentage;
    QString m_selectedCircuitID;
    QString m_reportCaption;
    QString m_reportHeader;
    QString m_wpUserId;
    QString m_callClassParams;
    QString m_billIds;
    qint16 m_costCentreSummarySelectionLevel = 0;
    bool m_hasChanged;
};
