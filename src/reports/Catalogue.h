#pragma once

#include <QList>
#include <QString>
#include <span>
#include <string_view>

/// The five report lists; the codes are stored in the database.
enum ReportType {
    BillingReport = 1,
    CallReport = 2,
    CircuitReport = 3,
    InvoiceReport = 4,
    MobileReport = 5, ///< offered by the report editor only; a stored report of this type has no entry
};

/// Places in an entry's flags word.
enum ParameterGroup {
    CallDatesGroup = 1,
    CallHoursGroup = 2,
    DistanceBandsGroup = 3, ///< of every list but the private circuits
    PercentageGroup = 3,    ///< of the private circuits
    ThresholdsGroup = 4,
    AccountsGroup = 5,
    BillNumberGroup = 6,
    CircuitIdGroup = 7,
    SourceBillGroup = 8,
    WisperaUserGroup = 9,
    ExclusionsGroup = 10,
    CallClassesGroup = 11,
};

/// For which list arguments (bill types) an entry belongs to its list.
enum class Presence { Always, ExceptLinkvale, ExceptIdc, OnlyIdc, OnlyPrivateCircuits, OnlyWispera };

/// One report that a template may hold. All texts are ASCII.
struct CatalogueEntry {
    int id;                   ///< unique within any one list
    std::string_view title;   ///< holds no comma
    std::string_view flags;   ///< one Y or N per parameter group; the length differs from entry to entry
    std::string_view lines;   ///< the kinds of line it runs for, of L M V D; may be empty
    std::string_view outputs; ///< of E (Excel), C (CSV), P (print)
    Presence presence;

    /// Whether the report offers the parameter group at this place, counted from 1.
    bool offers(int position) const;
    bool offersAnyGroup() const { return flags.find('Y') != flags.npos; }
    bool runsFor(char line) const { return lines.find(line) != lines.npos; }
    /// Whether the report can be restricted so; all mobiles have no letter of their own.
    bool takesCallsFrom(int callFilter) const;
    bool allowsOutput(char output) const { return outputs.find(output) != outputs.npos; }
    QString titleText() const;
    /// "YYYYYNNNNNYN LMVD ECP", or "NNNNNNNN ECP" without kinds of line.
    QString options() const;
};

/// The options of a report that no list holds.
inline constexpr char NoOptions[] = "NNNNNNNN";

/// Selects the entries of a list that are there.
struct ListChoice {
    int argument = 1; ///< a bill type
    bool wispera = false;

    /// What a stored report is looked up with, whatever the project.
    static ListChoice forLookUp(int reportType, bool wispera);
    /// What a project offers; `billType` 0 counts as 1.
    static ListChoice forProject(int reportType, int billType, bool wispera);
};

/// Every entry of a list in its order, those that only some arguments bring in included; empty for an
/// unknown type.
std::span<const CatalogueEntry> catalogueRows(int reportType);
/// The entries that are there, in list order.
QList<const CatalogueEntry*> catalogueEntries(int reportType, ListChoice choice);
/// Null when the list holds no such report.
const CatalogueEntry* catalogueEntry(int reportType, int reportSubType, ListChoice choice);
/// The identifier of the first entry of exactly this title; 0 when there is none.
int GetReportTypeIdFromTitle(int reportType, const QString& title, ListChoice choice);

/// The lists as texts: identifier, title and options of each entry, all joined by ",".
QString gsReportsArray_Billing();
QString gsReportsArray_Calls(int argument, bool wispera);
QString gsReportsArray_Circuits(int argument);
QString gsReportsArray_Invoice();
QString gsReportsArray_Mobile(int argument, bool wispera);

/// What the report chooser says of an entry: one sentence for each parameter group that it offers.
QStringList parameterGroupTexts(const CatalogueEntry& entry, int reportType);
