#include "reports/ParameterSummary.h"

#include "reports/AccountFilter.h"
#include "reports/CallFilter.h"
#include "reports/Catalogue.h"
#include "reports/DateRange.h"
#include "reports/clsReportParameters.h"

#include <QLocale>

namespace {

QString shortDate(QDate date) {
    const QLocale locale = QLocale::system();
    QString format = locale.dateFormat(QLocale::ShortFormat);
    if (!format.contains("yyyy")) format.replace("yy", "yyyy");
    return locale.toString(date, format);
}

QString shortTime(QTime time) {
    return QLocale::system().toString(time, QLocale::ShortFormat);
}

/// The pieces of one summary; each function adds those of one parameter group.
class Pieces {
public:
    Pieces(const clsReportParameters& parameters, const CurrentProject& project, int reportType)
        : m_parameters(parameters), m_project(project), m_reportType(reportType) {}

    void addThresholds() {
        addThreshold("Cost(£)>", m_parameters.CostRangeMinimum());
        addThreshold("Cost(£)<", m_parameters.CostRangeMaximum());
        addThreshold("Duration(mins)>", m_parameters.DurationRangeMinimum());
        addThreshold("Duration(mins)<", m_parameters.DurationRangeMaximum());
    }

    void addDays() {
        const QStringList days = selectedDays(m_parameters);
        if (days.size() < 7) m_pieces << "Days:" + (days.isEmpty() ? QString("None") : days.join(u' '));
    }

    void addDates() {
        if (m_project.edited.useDefaultDates) {
            m_pieces << "Project Default Dates";
            return;
        }
        const QDate start = m_parameters.DateRangeStart();
        const QDate end = m_parameters.DateRangeEnd();
        if (start != dateRange::FirstDate || end != dateRange::LastDate)
            m_pieces << "Dates From " + shortDate(start) + " To " + shortDate(end);
    }

    void addHours() {
        const QTime start = m_parameters.TimeRangeStart();
        const QTime end = m_parameters.TimeRangeEnd();
        if (start != dateRange::FirstTime || end != dateRange::LastTime)
            m_pieces << "Times From " + shortTime(start) + " To " + shortTime(end);
        m_pieces << (m_parameters.TimeRangeOvernight() ? "Overnight:Selected" : "Overnight:Not Selected");
    }

    void addDistanceBands() {
        const auto [first, last] =
            distanceBands::suiting(m_parameters.CallFilter(), m_project.reportedBillType());
        QStringList names;
        for (int band = first; band <= last; ++band)
            if (m_parameters.DistanceBandSelected(band)) names << distanceBands::name(band);
        if (names.size() <= last - first) m_pieces << "Distance Bands:[" + names.join(", ") + "]";
    }

    void addBillNumber() {
        const QString& number = m_parameters.LinkvaleBillNumber();
        m_pieces << "Account Filter:Selected Bill No:" + (number.isEmpty() ? QString("All") : number);
    }

    void addAccounts() {
        if (m_parameters.AccountFilter() != AllAccounts)
            m_pieces << "Account Filter:" + accountFilterText(m_parameters, m_reportType);
    }

    void addPercentage() {
        m_pieces << QString("Compare Percentage:%1%").arg(m_parameters.CircuitsPercentage());
    }

    void addSourceBill() {
        const QString& reference = m_parameters.SourceBillRef();
        if (!reference.isEmpty()) m_pieces << "Source Bill Ref:" + reference;
    }

    void addCalls() {
        const int filter = m_parameters.CallFilter();
        if (filter != AllLinesAndMobiles) m_pieces << "Calls From:" + callFilterName(filter);
    }

    QString joined() const { return m_pieces.join(", "); }

private:
    void addThreshold(const QString& caption, const QString& threshold) {
        if (!threshold.isEmpty()) m_pieces << caption + threshold;
    }

    const clsReportParameters& m_parameters;
    const CurrentProject& m_project;
    const int m_reportType;
    QStringList m_pieces;
};

} // namespace

QString dayName(int day) {
    return QLocale::c().dayName(day == 1 ? Qt::Sunday : day - 1);
}

QStringList selectedDays(const clsReportParameters& parameters) {
    QStringList days;
    for (int day = 1; day <= 7; ++day)
        if (parameters.DaySelected(day)) days << dayName(day).left(3);
    return days;
}

QString parameterSummary(const clsReportParameters& parameters, const CurrentProject& project, int reportType,
                         const QString& options) {
    const QStringList words = options.split(u' ', Qt::SkipEmptyParts);
    const auto offers = [&](int position) { return words.value(0).mid(position - 1, 1) == "Y"; };
    const bool circuits = reportType == CircuitReport;

    Pieces pieces(parameters, project, reportType);
    if (offers(ThresholdsGroup)) pieces.addThresholds();
    if (offers(CallDatesGroup)) pieces.addDays();
    if (offers(CallDatesGroup)) pieces.addDates();
    if (offers(CallHoursGroup)) pieces.addHours();
    if (offers(DistanceBandsGroup) && !circuits) pieces.addDistanceBands();
    if (reportType == InvoiceReport) pieces.addBillNumber();
    if (offers(AccountsGroup)) pieces.addAccounts();
    if (offers(PercentageGroup) && circuits) pieces.addPercentage();
    if (offers(SourceBillGroup)) pieces.addSourceBill();
    if (words.size() > 2) pieces.addCalls(); // with kinds of line there are three words
    return pieces.joined();
}

QString accountFilterText(const clsReportParameters& parameters, int reportType) {
    const int filter = parameters.AccountFilter();
    if (filter == AllAccounts) return "All Accounts";
    if (filter == SeveralCostCentreLevels) {
        QStringList chosen;
        for (int level = 1; level <= 5; ++level)
            if (const QString& costCentre = parameters.CostCentre(level); !costCentre.isEmpty())
                chosen << QString("CC%1 = ").arg(level) + costCentre;
        return "Multi Level Cost Centres Selected : " + chosen.join(", ");
    }
    if (filter == OneServiceNumber)
        return (reportType == CircuitReport ? "Circuit ID = " : "Service Number = ")
               + parameters.ServiceNumber();
    if (filter >= CostCentreLevel1 && filter <= CostCentreLevel5) {
        const int level = filter - CostCentreLevel1 + 1;
        return QString("Cost Centre %1 = ").arg(level) + parameters.CostCentre(level);
    }
    return {};
}
