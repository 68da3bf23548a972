#pragma once

/// What is particular to single reports, by their identifiers (ReportSubType). Some of these identifiers
/// stand in stored rows only: the lists of the catalogue do not offer them any more.

/// Reports that carry one value of their own beside the parameter groups.
enum SingleValueReport {
    CallsToNumberReport = 142,
    CallsFromNumberReport = 143,
    CallsNotToNumberReport = 146,
    RepeatCallerReport = 160,
    SelectedCircuitReport = 326,
};

/// Whether a call report may have the AccountFilter RestrictedSelection.
bool reportAcceptsRestrictedSelection(int reportSubType);
/// The reports about tagged calls; no others ask which.
bool isTaggedCallReport(int reportSubType);
/// Mobile reports that are about one handset.
bool isHandsetReport(int reportType, int reportSubType);
