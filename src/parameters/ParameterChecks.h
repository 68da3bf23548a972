#pragma once

#include "reports/clsReport.h"

#include <QStringList>
#include <optional>

/// What stands against parameters as they were entered, in words for the user.
namespace parameterChecks {

/// Empty when the text can be used.
QString captionFault(const QString& caption);
QString headerFault(const QString& header);
/// Empty for an amount, or for no text at all.
QString amountFault(const QString& text);
/// Empty for a pair of thresholds that something can lie between; `kind` is "cost" or "duration". A text
/// that is no amount has words of its own.
QString thresholdsFault(const QString& kind, const QString& lower, const QString& higher);

/// What a report is about, and has not been told.
enum class MissingValue { None, Circuit, CallsTo, CallsNotTo, CallsFrom };
MissingValue missingValue(int reportSubType, const clsReportParameters& parameters);

struct Fault {
    QString text;
    bool information = false; ///< shown with the information icon
};

/// The first thing that forbids saving `parameters` for the report. `entry` is the report's catalogue
/// entry, null when it has none; `sourceBills` are the references that may be chosen.
std::optional<Fault> firstFault(const clsReport& report, const CatalogueEntry* entry,
                                const clsReportParameters& parameters, const QStringList& sourceBills);

/// Refuses texts that their columns could not hold later; throws a Refusal.
void requireTextsFit(clsReport edited);

} // namespace parameterChecks
