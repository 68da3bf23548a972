#include "reports/ReportFanOut.h"

#include "reports/AccountFilter.h"

#include <QStringList>
#include <algorithm>

namespace {

bool isOneLevel(int filter) {
    return filter >= CostCentreLevel1 && filter <= CostCentreLevel5;
}

/// What the account selection holds, for those selections that may hold several values.
QString selection(const clsReportParameters& parameters) {
    const int filter = parameters.AccountFilter();
    if (filter == OneServiceNumber) return parameters.ServiceNumber();
    return isOneLevel(filter) ? parameters.CostCentre(filter - CostCentreLevel1 + 1) : QString();
}

void setSelection(clsReportParameters& parameters, const QString& value) {
    const int filter = parameters.AccountFilter();
    if (filter == OneServiceNumber)
        parameters.setServiceNumber(value);
    else
        parameters.setCostCentre(filter - CostCentreLevel1 + 1, value);
}

void addReport(clsReports_Collection& reports, clsReport& report,
               std::shared_ptr<clsReportParameters> parameters) {
    QString key;
    reports.Add(0, std::move(parameters), report.ReportType(), report.ReportSubType(), report.OutputExcel(),
                report.OutputCSV(), report.OutputEmail(), key);
}

void replaceReport(clsReport& report, clsReport& edited) {
    report.setReportType(edited.ReportType());
    report.setReportSubType(edited.ReportSubType());
    report.setParameters(edited.Parameters());
    report.setOutputExcel(edited.OutputExcel());
    report.setOutputCSV(edited.OutputCSV());
    report.setOutputEmail(edited.OutputEmail());
}

} // namespace

qsizetype reportsMadeOf(const clsReportParameters& parameters) {
    return qMax(1, selection(parameters).split('|', Qt::SkipEmptyParts).size());
}

QString distinctValue(const clsReportParameters& parameters) {
    return reportsMadeOf(parameters) == 1 ? selection(parameters) : QString();
}

QList<std::shared_ptr<clsReportParameters>>
onePerValue(const std::shared_ptr<clsReportParameters>& parameters) {
    const QStringList values = selection(*parameters).split('|', Qt::SkipEmptyParts);
    if (values.size() < 2) return {parameters};
    QList<std::shared_ptr<clsReportParameters>> copies;
    for (const QString& value : values) {
        copies << parameters->Clone();
        setSelection(*copies.last(), value);
    }
    return copies;
}

int putReport(clsReports_Collection& reports, clsReport edited, int position) {
    const auto each = onePerValue(edited.Parameters());
    if (position > 0 && each.size() == 1) {
        replaceReport(reports.Item(position), edited);
        return position;
    }
    const int first = reports.Count() + 1;
    for (const auto& parameters : each) addReport(reports, edited, parameters);
    if (position == 0) return first;
    reports.Remove(position);
    return first - 1;
}

void insertReport(clsReports_Collection& reports, clsReport report, int position) {
    addReport(reports, report, report.Parameters());
    reports.Move(reports.Count(), position);
}

int moveReports(clsReports_Collection& reports, const QList<int>& positions, int before) {
    const auto firstBehind = std::ranges::lower_bound(positions, before);
    int above = before;
    for (auto position = firstBehind; position != positions.begin();) reports.Move(*--position, --above);
    int below = before;
    for (auto position = firstBehind; position != positions.end(); ++position)
        reports.Move(*position, below++);
    return above;
}

void duplicateReport(clsReports_Collection& reports, int position) {
    clsReport& report = reports.Item(position);
    addReport(reports, report, report.Parameters()->Clone());
    reports.Move(reports.Count(), position + 1);
}
