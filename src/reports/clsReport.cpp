#include "reports/clsReport.h"

#include "reports/FewNumbers.h"

namespace {

QString titleOf(const CatalogueEntry* entry) {
    return entry ? entry->titleText() : QString("Unknown Report");
}

} // namespace

clsReport::clsReport(const CurrentProject& project)
    : m_project(&project), m_parameters(std::make_shared<clsReportParameters>(project)) {}

/// The lists that stored reports are named from hold no mobile reports.
const CatalogueEntry* clsReport::lookedUpEntry() const {
    if (m_reportType == MobileReport) return nullptr;
    return catalogueEntry(m_reportType, m_reportSubType,
                          ListChoice::forLookUp(m_reportType, m_project->wispera));
}

const CatalogueEntry* clsReport::offeredEntry() const {
    return catalogueEntry(
        m_reportType, m_reportSubType,
        ListChoice::forProject(m_reportType, m_project->reportedBillType(), m_project->wispera));
}

const CatalogueEntry* clsReport::Entry() const {
    return catalogueEntry(m_reportType, m_reportSubType, ListChoice::forLookUp(m_reportType, true));
}

QString clsReport::GetReportTitle() const {
    const std::optional<QString> value = SingleValue();
    return titleOf(lookedUpEntry()) + (value ? " '" + *value + "'" : QString());
}

QString clsReport::ShownTitle() const {
    const std::optional<QString> value = SingleValue();
    return titleOf(Entry()) + (value ? " '" + fewNumbers(*value) + "'" : QString());
}

std::optional<QString> clsReport::SingleValue() const {
    switch (m_reportSubType) {
    case CallsToNumberReport:
        return m_parameters->CallsToNumber();
    case CallsFromNumberReport:
        return m_parameters->CallsFromNumber();
    case CallsNotToNumberReport:
        return m_parameters->CallsNotToNumber();
    case RepeatCallerReport:
        return m_parameters->RepeatCallerThreshold();
    case SelectedCircuitReport:
        return m_parameters->SelectedCircuitID();
    default:
        return {};
    }
}

void clsReport::setSingleValue(const QString& value) {
    switch (m_reportSubType) {
    case CallsToNumberReport:
        return m_parameters->setCallsToNumber(value);
    case CallsFromNumberReport:
        return m_parameters->setCallsFromNumber(value);
    case CallsNotToNumberReport:
        return m_parameters->setCallsNotToNumber(value);
    case RepeatCallerReport:
        return m_parameters->setRepeatCallerThreshold(value);
    case SelectedCircuitReport:
        return m_parameters->setSelectedCircuitID(value);
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
