#include "reports/ReportText.h"

#include "reports/clsReport.h"

#include <QStringList>

QString reportSummary(clsReport& report) {
    QStringList outputs;
    if (report.OutputExcel()) outputs << "Excel";
    if (report.OutputPrint()) outputs << "Print";
    if (report.OutputCSV()) outputs << "CSV";
    QString text = outputs.isEmpty() ? QString("No output !!! :") : "Output to " + outputs.join(", ") + " :";
    if (report.OutputEmail()) text += " Email Files:";
    const clsReportParameters& parameters = *report.Parameters();
    const CatalogueEntry* entry = report.Entry();
    text += parameters.ParameterSummary(report.ReportType(), entry ? entry->options() : NoOptions);
    if (!parameters.ReportCaption().isEmpty()) text += "Caption='" + parameters.ReportCaption() + "'";
    return text;
}
