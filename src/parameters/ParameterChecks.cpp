#include "parameters/ParameterChecks.h"

#include "db/ColumnText.h"
#include "reports/AccountFilter.h"
#include "reports/ReportColumns.h"
#include "reports/ThresholdAmount.h"

#include <QRegularExpression>

namespace parameterChecks {

namespace {

QString forbiddenLettersFault(const QString& text) {
    static const QRegularExpression forbidden(R"([\\/:*?<>])");
    return text.contains(forbidden)
               ? R"(Report caption contains characters that are not allowed \ / : * ? < >)"
               : QString();
}

/// The values that one text holds for a report each.
QStringList values(const QString& joined) {
    return joined.split('|', Qt::SkipEmptyParts);
}

/// Runs through the checks in the order in which they are made.
class Checks {
public:
    Checks(const clsReport& report, const CatalogueEntry* entry, const clsReportParameters& parameters)
        : m_report(report), m_entry(entry), m_parameters(parameters) {}

    std::optional<Fault> rangeFault() const {
        if (offers(CallDatesGroup) && m_parameters.DateRangeStart() > m_parameters.DateRangeEnd())
            return tryAgain("The Start date parameter can not be greater than the End date parameter,");
        if (!offers(ThresholdsGroup)) return {};
        if (const auto fault =
                pairFault("Cost", m_parameters.CostRangeMinimum(), m_parameters.CostRangeMaximum()))
            return fault;
        return pairFault("Duration", m_parameters.DurationRangeMinimum(),
                         m_parameters.DurationRangeMaximum());
    }

    /// Reports that are about one thing need to be told which.
    std::optional<Fault> missingValueFault() const {
        const int report = m_report.ReportSubType();
        switch (missingValue(report, m_parameters)) {
        case MissingValue::Circuit:
            return Fault{"You have not selected a circuit for the 'Selected Circuit' Report"};
        case MissingValue::CallsTo:
            return Fault{"You have not selected any call to for the 'Calls To' Report"};
        case MissingValue::CallsNotTo:
            return Fault{"You have not selected any calls not to for the 'Calls Not To' Report"};
        case MissingValue::CallsFrom:
            return Fault{"You have not selected any calls from for the 'Calls From' Report"};
        case MissingValue::None:
            break;
        }
        if (report == RepeatCallerReport && m_parameters.RepeatCallerThreshold().isEmpty())
            return Fault{"You have not entered a threshold for the 'Repeat Caller' Report"};
        const bool needsNumber = offers(AccountsGroup) && m_parameters.AccountFilter() == OneServiceNumber;
        if (m_report.ReportType() == MobileReport && needsNumber && m_parameters.ServiceNumber().isEmpty())
            return Fault{"You have not selected any handset numbers for a Mobile Report"};
        return {};
    }

    std::optional<Fault> sourceBillFault(const QStringList& sourceBills) const {
        const QString& reference = m_parameters.SourceBillRef();
        if (!offers(SourceBillGroup) || reference.isEmpty()
            || sourceBills.contains(reference, Qt::CaseInsensitive))
            return {};
        return Fault{"You must select a Source Bill Reference that exists in the list."};
    }

    std::optional<Fault> accountFault() const {
        if (!offers(AccountsGroup)) return {};
        const int filter = m_parameters.AccountFilter();
        if (selectsCostCentres(filter) && !anyCostCentre())
            return Fault{"You must select at least one cost centre"};
        if (filter == OneServiceNumber && m_parameters.ServiceNumber().isEmpty())
            return Fault{"You must select at least one service number"};
        if (filter == RestrictedSelection && m_parameters.LineSelection().isEmpty())
            return Fault{"You must select at least one line"};
        return {};
    }

private:
    bool offers(int group) const { return m_entry && m_entry->offers(group); }

    static Fault tryAgain(const QString& text) { return {text + "\r\nplease try again.", true}; }

    static std::optional<Fault> pairFault(const QString& kind, const QString& lower, const QString& higher) {
        for (const QString& text : {lower, higher})
            if (const QString fault = amountFault(text); !fault.isEmpty()) return Fault{fault};
        const QString fault = thresholdsFault(kind.toLower(), lower, higher);
        if (fault.isEmpty()) return {};
        if (thresholdAmount(lower) == thresholdAmount(higher)) return Fault{fault};
        return tryAgain(QString("The Lower %1 Threshold parameter can not be greater than the Higher %1 "
                                "Threshold parameter,")
                            .arg(kind));
    }

    static bool selectsCostCentres(int filter) {
        return filter == SeveralCostCentreLevels
               || (filter >= CostCentreLevel1 && filter <= CostCentreLevel5);
    }

    bool anyCostCentre() const {
        for (int level = 1; level <= 5; ++level)
            if (!m_parameters.CostCentre(level).isEmpty()) return true;
        return false;
    }

    const clsReport& m_report;
    const CatalogueEntry* m_entry;
    const clsReportParameters& m_parameters;
};

} // namespace

MissingValue missingValue(int reportSubType, const clsReportParameters& parameters) {
    switch (reportSubType) {
    case SelectedCircuitReport:
        return parameters.SelectedCircuitID().isEmpty() ? MissingValue::Circuit : MissingValue::None;
    case CallsToNumberReport:
        return parameters.CallsToNumber().isEmpty() ? MissingValue::CallsTo : MissingValue::None;
    case CallsNotToNumberReport:
        return parameters.CallsNotToNumber().isEmpty() ? MissingValue::CallsNotTo : MissingValue::None;
    case CallsFromNumberReport:
        return parameters.CallsFromNumber().isEmpty() ? MissingValue::CallsFrom : MissingValue::None;
    default:
        return MissingValue::None;
    }
}

QString captionFault(const QString& caption) {
    if (caption.trimmed().isEmpty()) return "Report caption is blank - please enter a valid caption";
    if (caption.size() > reportColumnWidth("ReportCaption"))
        return "Report caption is too long - please shorten to a maximum of 50 characters";
    return forbiddenLettersFault(caption);
}

QString headerFault(const QString& header) {
    if (header.size() > reportColumnWidth("ReportHeader"))
        return "Report header is too long - please shorten to a maximum of 200 characters";
    return forbiddenLettersFault(header);
}

QString amountFault(const QString& text) {
    if (thresholdAmount(text)) return {};
    const QString shown = text.size() > 30 ? text.left(30) + "…" : text;
    return QString("'%1' is not an amount. Please use digits and a decimal point only, for example 1250.50. "
                   "The largest amount is 900000000000000.")
        .arg(shown);
}

QString thresholdsFault(const QString& kind, const QString& lower, const QString& higher) {
    const std::optional<qint64> from = thresholdAmount(lower);
    const std::optional<qint64> to = thresholdAmount(higher);
    if (!from || !to || higher.isEmpty() || *to > *from) return {};
    return QString(
               "For the '%1 between' threshold, the second value must be greater than the first value.\r\n"
               "Please ammend the value.")
        .arg(kind);
}

std::optional<Fault> firstFault(const clsReport& report, const CatalogueEntry* entry,
                                const clsReportParameters& parameters, const QStringList& sourceBills) {
    const Checks checks(report, entry, parameters);
    if (const auto fault = checks.rangeFault()) return fault;
    if (const auto fault = checks.missingValueFault()) return fault;
    if (const auto fault = checks.sourceBillFault(sourceBills)) return fault;
    return checks.accountFault();
}

void requireTextsFit(clsReport edited) {
    forEachReportColumn([&](const ReportColumn& column, int number) {
        if (column.width == 0) return;
        const QString text = column.get(edited, number).toString();
        for (const QString& value : column.fansOut ? values(text) : QStringList(text))
            requireFits(column.fieldLabel(number), value, column.width, column.codePage);
    });
}

} // namespace parameterChecks
