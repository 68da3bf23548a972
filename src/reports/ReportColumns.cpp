#include "reports/ReportColumns.h"

#include "reports/AccountFilter.h"
#include "reports/CallFilter.h"

#include <stdexcept>

namespace {

using Parameters = clsReportParameters;
using enum ReportColumn::Kind;
using enum CodePage;

template <class Value, class Class>
std::decay_t<Value> argumentOf(void (Class::*)(Value));
template <class Value, class Class>
std::decay_t<Value> argumentOf(void (Class::*)(int, Value));

/// What a report's or its parameters' getter answers, which may be one of numbered values.
template <auto Getter>
QVariant get(clsReport& report, int number) {
    if constexpr (std::is_invocable_v<decltype(Getter), clsReport&>)
        return QVariant::fromValue((report.*Getter)());
    else if constexpr (std::is_invocable_v<decltype(Getter), Parameters&>)
        return QVariant::fromValue(((*report.Parameters()).*Getter)());
    else
        return QVariant::fromValue(((*report.Parameters()).*Getter)(number));
}

template <auto Setter>
void set(clsReport& report, int number, const QVariant& value) {
    using Value = decltype(argumentOf(Setter));
    if constexpr (std::is_invocable_v<decltype(Setter), clsReport&, Value>)
        (report.*Setter)(value.value<Value>());
    else if constexpr (std::is_invocable_v<decltype(Setter), Parameters&, Value>)
        ((*report.Parameters()).*Setter)(value.value<Value>());
    else
        ((*report.Parameters()).*Setter)(number, value.value<Value>());
}

/// The text is kept even where it is no amount: whoever edits the report sees it and can put it right.
template <auto Setter>
void setThreshold(clsReport& report, int number, const QVariant& value) {
    try {
        set<Setter>(report, number, value);
    } catch (const std::invalid_argument&) {
    }
}

/// What the report does not offer is written empty. A report that the current project does not know
/// (it belongs to another one, or to another version of the catalogue) is written back as it was.
QString ifOffered(const clsReport& report, int group, const QString& value) {
    return report.IsOffered() ? report.ValidateParameter(group, value) : value;
}

QVariant costCentre(clsReport& report, int level) {
    return ifOffered(report, AccountsGroup, report.Parameters()->CostCentre(level));
}

QVariant singleValue(clsReport& report, int) {
    const std::optional<QString> value = report.SingleValue();
    if (!value) return {};
    return report.ReportSubType() == SelectedCircuitReport ? ifOffered(report, CircuitIdGroup, *value)
                                                           : *value;
}

void setSingleValue(clsReport& report, int, const QVariant& value) {
    report.setSingleValue(value.toString());
}

QVariant linkvaleBillNumber(clsReport& report, int) {
    return report.ReportType() == InvoiceReport ? QVariant(report.Parameters()->LinkvaleBillNumber())
                                                : QVariant();
}

void setLinkvaleBillNumber(clsReport& report, int, const QVariant& value) {
    if (report.ReportType() == InvoiceReport) report.Parameters()->setLinkvaleBillNumber(value.toString());
}

QVariant circuitPercentage(clsReport& report, int) {
    if (report.ReportType() != CircuitReport) return {};
    const QString percentage = QString::number(report.Parameters()->CircuitsPercentage());
    const QString offered = ifOffered(report, PercentageGroup, percentage);
    return offered.isEmpty() ? QVariant() : QVariant(offered);
}

void setCircuitPercentage(clsReport& report, int, const QVariant& value) {
    if (report.ReportType() == CircuitReport)
        report.Parameters()->setCircuitsPercentage(quint8(qBound(0.0, value.toString().toDouble(), 255.0)));
}

using P = Parameters;
using R = clsReport;

/// Codes have no meaning beyond the highest, other numbers may get one with a later catalogue.
template <auto Getter, auto Setter>
constexpr ReportColumn code(const char* name, int highest) {
    ReportColumn column{name, Number, get<Getter>, set<Setter>};
    column.highestCode = highest;
    return column;
}

constexpr ReportColumn columns[] = {
    code<&P::CallFilter, &P::setCallFilter>("CallFilter", AllLinesVoiceOnly),
    code<&P::AccountFilter, &P::setAccountFilter>("AccountFilter", RestrictedSelection),
    {"Day", Flag, get<&P::DaySelected>, set<&P::setDaySelected>, 7},
    {"DateStart", Date, get<&P::DateRangeStart>, set<&P::setDateRangeStart>},
    {"DateEnd", Date, get<&P::DateRangeEnd>, set<&P::setDateRangeEnd>},
    {"TimeStart", Time, get<&P::TimeRangeStart>, set<&P::setTimeRangeStart>},
    {"TimeEnd", Time, get<&P::TimeRangeEnd>, set<&P::setTimeRangeEnd>},
    {"Overnight", Flag, get<&P::TimeRangeOvernight>, set<&P::setTimeRangeOvernight>},
    {"Distance", Flag, get<&P::DistanceBandSelected>, set<&P::setDistanceBandSelected>, distanceBands::Count},
    {"CostStart", Text, get<&P::CostRangeMinimum>, setThreshold<&P::setCostRangeMinimum>, 0, "lowest cost",
     20, Latin1252},
    {"CostEnd", Text, get<&P::CostRangeMaximum>, setThreshold<&P::setCostRangeMaximum>, 0, "highest cost", 20,
     Latin1252},
    {"DurationStart", Text, get<&P::DurationRangeMinimum>, setThreshold<&P::setDurationRangeMinimum>, 0,
     "shortest duration", 20, Latin1252},
    {"DurationEnd", Text, get<&P::DurationRangeMaximum>, setThreshold<&P::setDurationRangeMaximum>, 0,
     "longest duration", 20, Latin1252},
    {"ServiceNo", Text, get<&P::ServiceNumber>, set<&P::setServiceNumber>, 0, "service number", 50, Unicode,
     true},
    {"CC", Text, costCentre, set<&P::setCostCentre>, 5, "cost centre of level ", 30, Unicode, true},
    {"ReportSubType", Number, get<&R::ReportSubType>, set<&R::setReportSubType>},
    {"CallsToNumber", Text, singleValue, setSingleValue},
    {"ReportType", Number, get<&R::ReportType>, set<&R::setReportType>},
    {"LinkvaleBillNumber", Text, linkvaleBillNumber, setLinkvaleBillNumber, 0, "bill number", 50},
    {"CircuitPercentage", Text, circuitPercentage, setCircuitPercentage, 0, "comparison percentage", 10},
    {"SourceBillRef", Text, get<&P::SourceBillRef>, set<&P::setSourceBillRef>, 0, "source bill reference",
     50},
    {"ReportCaption", Text, get<&P::ReportCaption>, set<&P::setReportCaption>, 0, "report caption", 50},
    {"Tagging", Number, get<&P::CallTaggingSetting>, set<&P::setCallTaggingSetting>},
    {"ReportHeader", Text, get<&P::ReportHeader>, set<&P::setReportHeader>, 0, "report header", 200},
    {"UserId", Text, get<&P::WPUserId>, set<&P::setWPUserId>, 0, "Wispera user ID", 30, Latin1252},
    {"CallClassParams", Text, get<&P::CallClassParams>, set<&P::setCallClassParams>, 0,
     "choice of call classes", 2000, Latin1252},
    {"LineSelection", Text, get<&P::LineSelection>, set<&P::setLineSelection>, 0, "line selection", 100,
     Latin1252},
    {"BillIds", Text, get<&P::BillIds>, set<&P::setBillIds>, 0, "choice of bills", 200, Latin1252},
    {"ReportID", Number, nullptr, set<&R::setID>},
    {"OutputExcel", Flag, get<&R::OutputExcel>, set<&R::setOutputExcel>},
    {"OutputCSV", Flag, get<&R::OutputCSV>, set<&R::setOutputCSV>},
    {"EmailFiles", Flag, get<&R::OutputEmail>, set<&R::setOutputEmail>},
    code<&P::CostCentreSummarySelectionLevel, &P::setCostCentreSummarySelectionLevel>("CostCentreLevel", 5),
};

QString numbered(const char* text, int number) {
    return number == 0 ? QString(text) : text + QString::number(number);
}

} // namespace

QString ReportColumn::columnName(int number) const {
    return numbered(name, number);
}

QString ReportColumn::fieldLabel(int number) const {
    return numbered(label, number);
}

std::span<const ReportColumn> reportColumns() {
    return columns;
}

int reportColumnWidth(const char* name) {
    for (const ReportColumn& column : columns)
        if (std::string_view(name) == column.name) return column.width;
    throw std::out_of_range("no report column has this name");
}
