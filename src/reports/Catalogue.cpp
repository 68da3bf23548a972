#include "reports/Catalogue.h"

#include "reports/BillType.h"
#include "reports/CallFilter.h"

#include <QStringList>
#include <algorithm>

namespace {

QLatin1StringView latin1(std::string_view text) {
    return QLatin1StringView(text.data(), qsizetype(text.size()));
}

bool isPresent(const CatalogueEntry& entry, ListChoice choice) {
    switch (entry.presence) {
    case Presence::Always:
        return true;
    case Presence::ExceptLinkvale:
        return choice.argument != LinkvaleBill;
    case Presence::ExceptIdc:
        return choice.argument != IdcBill;
    case Presence::OnlyIdc:
        return choice.argument == IdcBill;
    case Presence::OnlyPrivateCircuits:
        return choice.argument == PrivateCircuitsBill;
    case Presence::OnlyWispera:
        return choice.wispera;
    }
    return false;
}

template <class Predicate>
const CatalogueEntry* firstEntry(int reportType, ListChoice choice, Predicate matches) {
    const auto rows = catalogueRows(reportType);
    const auto found = std::ranges::find_if(
        rows, [&](const CatalogueEntry& e) { return matches(e) && isPresent(e, choice); });
    return found == rows.end() ? nullptr : &*found;
}

QString listText(int reportType, ListChoice choice) {
    QStringList fields;
    for (const CatalogueEntry* entry : catalogueEntries(reportType, choice))
        fields << QString::number(entry->id) << entry->titleText() << entry->options();
    return fields.join(u',');
}

QString groupText(int position, int reportType) {
    switch (position) {
    case CallDatesGroup:
        return "This report has selectable Call Dates and Days";
    case CallHoursGroup:
        return "This report has selectable Call Hours";
    case DistanceBandsGroup:
        return reportType == CircuitReport ? "This report has selectable Percentage Value for comparison"
                                           : "This report has selectable Distance Bands";
    case ThresholdsGroup:
        return "This report has selectable Thresholds";
    case AccountsGroup:
        return "This report has Account and Cost Centre Selection";
    case BillNumberGroup:
        return "This report has a selectable Bill Number";
    case CircuitIdGroup:
        return "This report has a Circuit ID Selection";
    case SourceBillGroup:
        return "This report has a Source Bill Ref";
    case WisperaUserGroup:
        return "This report has an Wispera User ID selection";
    case ExclusionsGroup:
        return "This report has Exclusions associated";
    case CallClassesGroup:
        return "This report has Call Classes associated";
    default:
        return {};
    }
}

} // namespace

bool CatalogueEntry::offers(int position) const {
    return position >= 1 && std::size_t(position) <= flags.size() && flags[std::size_t(position) - 1] == 'Y';
}

bool CatalogueEntry::takesCallsFrom(int callFilter) const {
    switch (callFilter) {
    case AllLinesAndMobiles:
    case AllMobiles:
        return runsFor('M');
    case AllLines:
        return runsFor('L');
    case AllLinesDataOnly:
        return runsFor('D');
    case AllLinesVoiceOnly:
        return runsFor('V');
    default:
        return false;
    }
}

QString CatalogueEntry::titleText() const {
    return latin1(title);
}

QString CatalogueEntry::options() const {
    return lines.empty() ? latin1(flags) + ' ' + latin1(outputs)
                         : latin1(flags) + ' ' + latin1(lines) + ' ' + latin1(outputs);
}

ListChoice ListChoice::forLookUp(int reportType, bool wispera) {
    return {reportType == CircuitReport ? PrivateCircuitsBill : UnitabBill, wispera};
}

ListChoice ListChoice::forProject(int reportType, int billType, bool wispera) {
    if (reportType != CallReport || billType == UnknownBill) return forLookUp(reportType, wispera);
    return {billType, wispera};
}

QList<const CatalogueEntry*> catalogueEntries(int reportType, ListChoice choice) {
    QList<const CatalogueEntry*> entries;
    for (const CatalogueEntry& entry : catalogueRows(reportType))
        if (isPresent(entry, choice)) entries << &entry;
    return entries;
}

const CatalogueEntry* catalogueEntry(int reportType, int reportSubType, ListChoice choice) {
    return firstEntry(reportType, choice, [=](const CatalogueEntry& e) { return e.id == reportSubType; });
}

int GetReportTypeIdFromTitle(int reportType, const QString& title, ListChoice choice) {
    const CatalogueEntry* entry =
        firstEntry(reportType, choice, [&](const CatalogueEntry& each) { return each.titleText() == title; });
    return entry ? entry->id : 0;
}

QString gsReportsArray_Billing() {
    return listText(BillingReport, {});
}

QString gsReportsArray_Calls(int argument, bool wispera) {
    return listText(CallReport, {argument, wispera});
}

QString gsReportsArray_Circuits(int argument) {
    return listText(CircuitReport, {argument});
}

QString gsReportsArray_Invoice() {
    return listText(InvoiceReport, {});
}

QString gsReportsArray_Mobile(int argument, bool wispera) {
    return listText(MobileReport, {argument, wispera});
}

QStringList parameterGroupTexts(const CatalogueEntry& entry, int reportType) {
    QStringList texts;
    for (int position = CallDatesGroup; position <= CallClassesGroup; ++position)
        if (entry.offers(position)) texts << groupText(position, reportType);
    return texts;
}
