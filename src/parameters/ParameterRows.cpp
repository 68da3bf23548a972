#include "parameters/ParameterRows.h"

#include "reports/AccountFilter.h"
#include "reports/CallFilter.h"
#include "reports/CallTagging.h"
#include "reports/FewNumbers.h"
#include "reports/ParameterSummary.h"

#include <QLocale>
#include <QStringList>

namespace {

QString either(const QString& value, const char* none) {
    return value.isEmpty() ? QString(none) : value;
}

QString yesNo(bool yes) {
    return yes ? "Yes" : "No";
}

/// Several values in one text, for reading.
QString listed(QString joined) {
    return joined.replace('|', ", ");
}

QString daysText(const clsReportParameters& parameters) {
    const QStringList days = selectedDays(parameters);
    if (days.size() == 7) return "All Days";
    return days.isEmpty() ? QString("None") : days.join(' ');
}

QString accountText(const clsReportParameters& parameters, int reportType) {
    return parameters.AccountFilter() == RestrictedSelection
               ? "Selected Lines = " + listed(parameters.LineSelection())
               : listed(accountFilterText(parameters, reportType));
}

/// The rows of one report, made from its own parameters or from the defaults.
class Rows {
public:
    Rows(const clsReport& report, const clsReportParameters& parameters, const CurrentProject& project)
        : m_report(report), m_parameters(parameters), m_project(project) {
        addTexts();
        const CatalogueEntry* entry = report.Entry();
        if (!entry) return;
        addNumbers();
        addCallTimes(*entry);
        addLines(*entry);
        addThresholds(*entry);
        addAccounts(*entry);
        addTagging();
        add("Selected Bills", either(QString(m_parameters.BillIds()).replace(',', ", "), "All"));
    }

    const QList<ParameterRow>& rows() const { return m_rows; }

private:
    void add(const QString& caption, const QString& value) { m_rows.append({caption, value}); }

    void addTexts() {
        add("Report Caption", either(m_parameters.ReportCaption(), "(none)"));
        add("Report Header", either(m_parameters.ReportHeader(), "(none)"));
    }

    void addNumbers() {
        switch (m_report.ReportSubType()) {
        case CallsToNumberReport:
            return add("Calls To Number", either(fewNumbers(m_parameters.CallsToNumber()), "(none)"));
        case CallsFromNumberReport:
            return add("Calls From Number", either(fewNumbers(m_parameters.CallsFromNumber()), "(none)"));
        case CallsNotToNumberReport:
            return add("Calls Not To Number", either(fewNumbers(m_parameters.CallsNotToNumber()), "(none)"));
        case SelectedCircuitReport:
            return add("Selected Circuit", either(m_parameters.SelectedCircuitID(), "(none)"));
        }
    }

    void addCallTimes(const CatalogueEntry& entry) {
        if (entry.offers(CallDatesGroup)) {
            const auto shown = [this](QDate date) {
                return m_project.edited.useDefaultDates ? QString("Project Default Dates")
                                                        : QLocale::c().toString(date, "dd MMM yyyy");
            };
            add("Call Date From", shown(m_parameters.DateRangeStart()));
            add("Call Date To", shown(m_parameters.DateRangeEnd()));
            add("Call Days", daysText(m_parameters));
        }
        if (!entry.offers(CallHoursGroup)) return;
        add("Call Time From", m_parameters.TimeRangeStart().toString("HH:mm:ss"));
        add("Call Time To", m_parameters.TimeRangeEnd().toString("HH:mm:ss"));
        add("Overnight", yesNo(m_parameters.TimeRangeOvernight()));
    }

    void addLines(const CatalogueEntry& entry) {
        if (!entry.lines.empty()) add("Calls From", callFilterName(m_parameters.CallFilter()));
        if (!entry.offers(DistanceBandsGroup)) return;
        if (m_report.ReportType() == CircuitReport)
            return add("Compare Percentage", QString("%1%").arg(m_parameters.CircuitsPercentage()));
        const auto [first, last] =
            distanceBands::suiting(m_parameters.CallFilter(), m_project.reportedBillType());
        QStringList bands;
        for (int band = first; band <= last; ++band)
            if (m_parameters.DistanceBandSelected(band)) bands << distanceBands::name(band);
        add("Distance Bands",
            bands.size() > last - first ? QString("All") : either(bands.join(", "), "None"));
    }

    void addThresholds(const CatalogueEntry& entry) {
        if (!entry.offers(ThresholdsGroup)) return;
        add("Cost Above", either(m_parameters.CostRangeMinimum(), "(none)"));
        add("Cost Below", either(m_parameters.CostRangeMaximum(), "(none)"));
        add("Duration Above", either(m_parameters.DurationRangeMinimum(), "(none)"));
        add("Duration Below", either(m_parameters.DurationRangeMaximum(), "(none)"));
    }

    void addAccounts(const CatalogueEntry& entry) {
        if (entry.offers(AccountsGroup))
            add("Account Filter", accountText(m_parameters, m_report.ReportType()));
        if (entry.offers(AccountsGroup) && m_report.ReportType() == BillingReport)
            add("Summary Level",
                QString("Level %1").arg(qMax(1, int(m_parameters.CostCentreSummarySelectionLevel()))));
        if (entry.offers(BillNumberGroup))
            add("Selected Bill No", either(m_parameters.LinkvaleBillNumber(), "All"));
        if (entry.offers(SourceBillGroup))
            add("Source Bill Ref", either(m_parameters.SourceBillRef(), "All"));
        if (entry.offers(WisperaUserGroup)) add("Wispera User", either(m_parameters.WPUserId(), "All"));
        if (m_report.ReportType() == CallReport && entry.offers(CallClassesGroup))
            add("Call Classes", either(m_parameters.CallClassParams(), "All"));
    }

    void addTagging() {
        if (!isTaggedCallReport(m_report.ReportSubType())) return;
        const int setting = m_parameters.CallTaggingSetting();
        add("Call Tagging", callTaggingName(setting));
        add("Exclude Business", yesNo(setting == ExcludeBusiness));
        add("Exclude Private", yesNo(setting == ExcludePrivate));
    }

    const clsReport& m_report;
    const clsReportParameters& m_parameters;
    const CurrentProject& m_project;
    QList<ParameterRow> m_rows;
};

} // namespace

QList<ParameterRow> parameterRows(const clsReport& report, const clsReportParameters& defaults,
                                  const CurrentProject& project) {
    QList<ParameterRow> rows = Rows(report, *report.Parameters(), project).rows();
    const QList<ParameterRow> usual = Rows(report, defaults, project).rows();
    for (qsizetype i = 0; i < rows.size(); ++i) rows[i].differs = rows[i].value != usual[i].value;
    return rows;
}
