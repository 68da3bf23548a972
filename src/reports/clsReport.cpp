#include "reports/clsReport.h"

clsReport::clsReport(const CurrentProject& project)
    : m_project(&project), m_parameters(std::make_shared<clsReportParameters>(project)) {}

/// The lists that stored reports are named from hold no mobile reports.
const CatalogueEntry* clsReport::lookedUpEntry() const {
    if (m_reportType == MobileReport) return nullptr;
    return catalogueEntry(m_reportType, m_reportSubType,
                          ListChoice::forLookUp(m_reportType, m_project->wispera));
}

const CatalogueEntry* clsReport::offeredEntry() const {
    return catalogueEntry(m_reportType, m_reportSubType,
                          ListChoice::forProject(m_reportType, m_project->billType, m_project->wispera));
}

const CatalogueEntry* clsReport::Entry() const {
    return catalogueEntry(m_reportType, m_reportSubType, ListChoice::forLookUp(m_reportType, true));
}

QString clsReport::GetReportTitle() const {
    return titleOf(lookedUpEntry());
}

QString clsReport::ShownTitle() const {
    return titleOf(Entry());
}

QString clsReport::titleOf(const CatalogueEntry* entry) const {
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
    const CatalogueEntry* entry = offeredEntry();
    return entry && entry->offers(position) ? value : QString();
}

bool clsReport::keepIfAllowed(bool& output, char letter) {
    const CatalogueEntry* entry = Entry();
    if (entry && !entry->allowsOutput(letter)) output = false;
    return output;
}
