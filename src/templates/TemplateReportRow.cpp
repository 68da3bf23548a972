#include "templates/TemplateReportRow.h"

#include <QRegularExpression>
#include <algorithm>
#include <numeric>
#include <optional>
#include <stdexcept>

namespace templateReportRow {

namespace {

/// The places of the columns that read() asks for.
enum Column {
    CallFilter,
    AccountFilter,
    Day1,
    DateStart = Day1 + 7,
    DateEnd,
    TimeStart,
    TimeEnd,
    Overnight,
    Distance1,
    CostStart = Distance1 + distanceBands::Count,
    CostEnd,
    DurationStart,
    DurationEnd,
    ServiceNo,
    CC1,
    ReportSubType = CC1 + 5,
    CallsToNumber,
    ReportType,
    LinkvaleBillNumber,
    CircuitPercentage,
    SourceBillRef,
    ReportCaption,
    Tagging,
    ReportHeader,
    UserId,
    CallClassParams,
    LineSelection,
    BillIds,
    ReportID,
    OutputExcel,
    OutputCsv,
    EmailFiles,
    CostCentreLevel,
};

int integerOr(const Row& row, int column, int otherwise) {
    return row.isNull(column) ? otherwise : row.integer(column);
}

/// Of a text "08:30:00", "8:30 PM" or a whole datetime.
QTime timeOr(const Row& row, int column, QTime otherwise) {
    static const QRegularExpression clock("(\\d{1,2}):(\\d{2})(?::(\\d{2}))?(?:\\.\\d*)?\\s*([AaPp][Mm])?");
    const auto match = clock.match(row.text(column));
    int hour = match.captured(1).toInt();
    if (match.hasCaptured(4))
        hour = hour % 12 + (match.captured(4).startsWith(u'p', Qt::CaseInsensitive) ? 12 : 0);
    const QTime time(hour, match.captured(2).toInt(), match.captured(3).toInt());
    return match.hasMatch() && time.isValid() ? time : otherwise;
}

void readDates(const Row& row, clsReportParameters& parameters) {
    const auto date = [&](int column) { return QDate::fromString(row.text(column).left(10), Qt::ISODate); };
    if (const QDate start = date(DateStart); start.isValid()) parameters.setDateRangeStart(start);
    if (const QDate end = date(DateEnd); end.isValid()) parameters.setDateRangeEnd(end);
    parameters.setTimeRangeStart(timeOr(row, TimeStart, parameters.TimeRangeStart()));
    parameters.setTimeRangeEnd(timeOr(row, TimeEnd, parameters.TimeRangeEnd()));
    parameters.setTimeRangeOvernight(row.flag(Overnight));
}

void readThresholds(const Row& row, clsReportParameters& parameters) {
    const auto read = [&](int column, void (clsReportParameters::*set)(const QString&)) {
        try {
            (parameters.*set)(row.text(column));
        } catch (const std::invalid_argument&) {
            // The text is kept all the same: whoever edits the report sees it and can put it right.
        }
    };
    read(CostStart, &clsReportParameters::setCostRangeMinimum);
    read(CostEnd, &clsReportParameters::setCostRangeMaximum);
    read(DurationStart, &clsReportParameters::setDurationRangeMinimum);
    read(DurationEnd, &clsReportParameters::setDurationRangeMaximum);
}

/// One column serves five reports, each of which keeps another parameter in it.
void readSingleValue(const Row& row, clsReportParameters& parameters) {
    const QString value = row.text(CallsToNumber);
    switch (row.integer(ReportSubType)) {
    case CallsToNumberReport:
        parameters.setCallsToNumber(value);
        break;
    case CallsFromNumberReport:
        parameters.setCallsFromNumber(value);
        break;
    case CallsNotToNumberReport:
        parameters.setCallsNotToNumber(value);
        break;
    case RepeatCallerReport:
        parameters.setRepeatCallerThreshold(value);
        break;
    case SelectedCircuitReport:
        parameters.setSelectedCircuitID(value);
        break;
    }
}

std::shared_ptr<clsReportParameters> readParameters(const Row& row, const CurrentProject& project) {
    auto parameters = std::make_shared<clsReportParameters>(project);
    // These two come first: setting them clears the bands, the service number and the cost centres.
    parameters->setCallFilter(integerOr(row, CallFilter, parameters->CallFilter()));
    parameters->setAccountFilter(integerOr(row, AccountFilter, parameters->AccountFilter()));
    for (int day = 1; day <= 7; ++day)
        parameters->setDaySelected(day, integerOr(row, Day1 + day - 1, 1) != 0);
    readDates(row, *parameters);
    for (int band = 1; band <= distanceBands::Count; ++band)
        parameters->setDistanceBandSelected(band, row.flag(Distance1 + band - 1));
    readThresholds(row, *parameters);
    parameters->setServiceNumber(row.text(ServiceNo));
    for (int level = 1; level <= 5; ++level) parameters->setCostCentre(level, row.text(CC1 + level - 1));
    readSingleValue(row, *parameters);
    if (row.integer(ReportType) == InvoiceReport)
        parameters->setLinkvaleBillNumber(row.text(LinkvaleBillNumber));
    if (row.integer(ReportType) == CircuitReport)
        parameters->setCircuitsPercentage(quint8(qBound(0, row.integer(CircuitPercentage), 255)));
    parameters->setSourceBillRef(row.text(SourceBillRef));
    parameters->setReportCaption(row.text(ReportCaption));
    parameters->setLineSelection(row.text(LineSelection));
    parameters->setCostCentreSummarySelectionLevel(qint16(row.integer(CostCentreLevel)));
    parameters->setCallTaggingSetting(row.integer(Tagging));
    parameters->setReportHeader(row.text(ReportHeader));
    parameters->setWPUserId(row.text(UserId));
    parameters->setCallClassParams(row.text(CallClassParams));
    parameters->setBillIds(row.text(BillIds));
    return parameters;
}

/// What the report does not offer is written empty. A report that the current project does not know
/// (it belongs to another one, or to another version of the catalogue) is written back as it was.
QString ifOffered(const clsReport& report, int group, const QString& value) {
    return report.IsOffered() ? report.ValidateParameter(group, value) : value;
}

std::optional<QString> singleValue(const clsReport& report) {
    const std::optional<QString> value = report.SingleValue();
    return report.ReportSubType() == SelectedCircuitReport ? ifOffered(report, CircuitIdGroup, *value)
                                                           : value;
}

std::optional<QString> circuitPercentage(const clsReport& report) {
    if (report.ReportType() != CircuitReport) return std::nullopt;
    const QString percentage = QString::number(report.Parameters()->CircuitsPercentage());
    const QString offered = ifOffered(report, PercentageGroup, percentage);
    return offered.isEmpty() ? std::nullopt : std::optional(offered);
}

void addDates(ColumnValues& columns, const clsReportParameters& parameters) {
    for (int day = 1; day <= 7; ++day) columns.add(QString("Day%1").arg(day), parameters.DaySelected(day));
    columns.add("DateStart", parameters.DateRangeStart());
    columns.add("DateEnd", parameters.DateRangeEnd());
    columns.add("TimeStart", parameters.TimeRangeStart().toString("HH:mm:ss"));
    columns.add("TimeEnd", parameters.TimeRangeEnd().toString("HH:mm:ss"));
    columns.add("Overnight", parameters.TimeRangeOvernight());
}

/// A server returns rows in any order it likes; their keys grow in the order of saving.
RecordSet inOrderOfSaving(const RecordSet& rows) {
    std::vector<qsizetype> order(std::size_t(rows.rowCount()));
    std::iota(order.begin(), order.end(), 0);
    std::ranges::stable_sort(order, {}, [&](qsizetype row) { return rows.row(row).integer(ReportID); });
    RecordSet sorted(rows.columns());
    for (const qsizetype row : order)
        for (int column = 0; column < rows.columns().size(); ++column) sorted.append(rows.cell(row, column));
    return sorted;
}

} // namespace

RecordSet read(Connection& connection, int templateId) {
    return inOrderOfSaving(connection.query(sql(
        "SELECT CallFilter, AccountFilter, Day1, Day2, Day3, Day4, Day5, Day6, Day7, DateStart, DateEnd, "
        "TimeStart, TimeEnd, Overnight, "
        "Distance1, Distance2, Distance3, Distance4, Distance5, Distance6, Distance7, Distance8, "
        "Distance9, Distance10, Distance11, Distance12, Distance13, Distance14, Distance15, Distance16, "
        "Distance17, Distance18, Distance19, Distance20, Distance21, Distance22, Distance23, "
        "CostStart, CostEnd, DurationStart, DurationEnd, ServiceNo, CC1, CC2, CC3, CC4, CC5, "
        "ReportSubType, CallsToNumber, ReportType, LinkvaleBillNumber, CircuitPercentage, SourceBillRef, "
        "ReportCaption, Tagging, ReportHeader, UserId, CallClassParams, LineSelection, BillIds, ReportID, "
        "OutputExcel, Outputcsv, EmailFiles, CostCentreLevel"
        " FROM NorvaScheduler.dbo.[tblTemplate_Report] WITH (NOLOCK) WHERE ([TemplateID] = {})",
        templateId)));
}

void addReports(const RecordSet& rows, const CurrentProject& project, clsReports_Collection& reports) {
    for (const Row row : rows) {
        const int id = row.integer(ReportID);
        QString key = "ID" + QString::number(id);
        reports.Add(id, readParameters(row, project), row.integer(ReportType), row.integer(ReportSubType),
                    row.flag(OutputExcel), row.flag(OutputCsv), row.flag(EmailFiles), key);
    }
}

ColumnValues columns(clsReport& report) {
    using enum CodePage;
    const clsReportParameters& parameters = *report.Parameters();
    ColumnValues columns(" of the report '" + report.ShownTitle() + "'");
    columns.add("ReportType", report.ReportType());
    columns.add("ReportSubType", report.ReportSubType());
    columns.add("OutputExcel", report.OutputExcel());
    columns.add("OutputCSV", report.OutputCSV());
    columns.add("EmailFiles", report.OutputEmail());
    addDates(columns, parameters);
    for (int band = 1; band <= distanceBands::Count; ++band)
        columns.add(QString("Distance%1").arg(band), parameters.DistanceBandSelected(band));
    columns.addText("CostStart", "lowest cost", parameters.CostRangeMinimum(), 20, Latin1252);
    columns.addText("CostEnd", "highest cost", parameters.CostRangeMaximum(), 20, Latin1252);
    columns.addText("DurationStart", "shortest duration", parameters.DurationRangeMinimum(), 20, Latin1252);
    columns.addText("DurationEnd", "longest duration", parameters.DurationRangeMaximum(), 20, Latin1252);
    columns.add("AccountFilter", parameters.AccountFilter());
    columns.addText("ServiceNo", "service number", parameters.ServiceNumber(), 50, Unicode);
    for (int level = 1; level <= 5; ++level)
        columns.addText(QString("CC%1").arg(level), QString("cost centre of level %1").arg(level),
                        ifOffered(report, AccountsGroup, parameters.CostCentre(level)), 30, Unicode);
    columns.add("CallFilter", parameters.CallFilter());
    columns.add("CallsToNumber", singleValue(report));
    if (report.ReportType() == InvoiceReport)
        columns.addText("LinkvaleBillNumber", "bill number", parameters.LinkvaleBillNumber(), 50, Unicode);
    columns.add("CircuitPercentage", circuitPercentage(report));
    columns.addText("SourceBillRef", "source bill reference", parameters.SourceBillRef(), 50, Unicode);
    columns.addText("ReportCaption", "report caption", parameters.ReportCaption(), 50, Unicode);
    columns.add("Tagging", parameters.CallTaggingSetting());
    columns.addText("ReportHeader", "report header", parameters.ReportHeader(), 200, Unicode);
    columns.addText("UserId", "Wispera user ID", parameters.WPUserId(), 30, Latin1252);
    columns.addText("CallClassParams", "choice of call classes", parameters.CallClassParams(), 2000,
                    Latin1252);
    columns.addText("LineSelection", "line selection", parameters.LineSelection(), 100, Latin1252);
    columns.add("CostCentreLevel", parameters.CostCentreSummarySelectionLevel());
    columns.addText("BillIds", "choice of bills", parameters.BillIds(), 200, Latin1252);
    return columns;
}

} // namespace templateReportRow
