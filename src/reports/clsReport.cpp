#include "reports/clsReport.h"

namespace {

/// The list that stored reports are looked up in holds no mobile reports: those are known only to the
/// editor that offers them.
const CatalogueEntry* storedEntry(int reportType, int reportSubType, ListChoice choice) {
    return reportType == MobileReport ? nullptr : catalogueEntry(reportType, reportSubType, choice);
}

} // namespace

clsReport::clsReport(const CurrentProject& project)
    : m_project(&project), m_parameters(std::make_shared<clsReportParameters>(project)) {}

const CatalogueEntry* clsReport::lookedUpEntry() const {
    return storedEntry(m_reportType, m_reportSubType,
                       ListChoice::forLookUp(m_reportType, m_project->wispera));
}

QString clsReport::GetReportTitle() const {
    const CatalogueEntry* entry = lookedUpEntry();
    const QString title = entry ? entry->titleText() : "Unknown Report";
    const auto withValue = [&](const QString& value) { return title + " '" + value + "'"; };
    switch (m_reportSubType) {
    case CallsToNumberReport:
        return withValue(m_parameters->CallsToNumber());
    case CallsFromNumberReport:
        return withValue(m_parameters->CallsFromNumber());
    case CallsNotToNumberReport:
        return withValue(m_parameters->CallsNotToNumber());
    case RepeatCallerReport:
        return withValue(m_parameters->RepeatCallerThreshold());
    case SelectedCircuitReport:
        return withValue(m_parameters->SelectedCircuitID());
    default:
        return title;
    }
}

QString clsReport::GetParameterOptions() const {
    const CatalogueEntry* entry = lookedUpEntry();
    return entry ? entry->options() : NoOptions;
}

QString clsReport::ValidateParameter(int position, const QString& value) const {
    const auto choice = ListChoice::forProject(m_reportType, m_project->billType, m_project->wispera);
    const CatalogueEntry* entry = storedEntry(m_reportType, m_reportSubType, choice);
    return entry && entry->offers(position) ? value : QString();
}

bool clsReport::keepIfAllowed(bool& output, char letter) {
    const CatalogueEntry* entry = lookedUpEntry();
    output = output && entry && entry->allowsOutput(letter);
    return output;
}
