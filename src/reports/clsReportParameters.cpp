#include "reports/clsReportParameters.h"

#include "reports/AccountFilter.h"
#include "reports/BillType.h"
#include "reports/CallFilter.h"
#include "reports/DateRange.h"
#include "reports/ParameterSummary.h"
#include "reports/ThresholdAmount.h"

#include <stdexcept>

namespace {

template <class Array>
auto& at(Array& array, int index) {
    return array.at(std::size_t(index) - 1); // index 0 wraps and is out of range as well
}

} // namespace

clsReportParameters::clsReportParameters(const CurrentProject& project) : m_project(&project) {
    Clear();
}

void clsReportParameters::Clear() {
    m_daySelected.fill(true);
    m_dateRangeStart = m_project->defaultStart.isValid() ? m_project->defaultStart : dateRange::FirstDate;
    m_dateRangeEnd = m_project->defaultEnd.isValid() ? m_project->defaultEnd : dateRange::LastDate;
    m_timeRangeStart = dateRange::FirstTime;
    m_timeRangeEnd = dateRange::LastTime;
    m_timeRangeOvernight = false;
    m_distanceBandSelected.fill(true);
    m_costRangeMinimum = m_costRangeMaximum = {};
    m_durationRangeMinimum = m_durationRangeMaximum = {};
    m_costCentre.fill({});
    m_callFilter = m_project->reportedBillType() == IdcBill ? AllLines : AllLinesAndMobiles;
    m_accountFilter = AllAccounts;
    m_callTaggingSetting = 0;
    m_circuitsPercentage = 0;
    for (QString* text : {&m_serviceNumber, &m_sourceBillRef, &m_callsToNumber, &m_callsNotToNumber,
                          &m_callsFromNumber, &m_repeatCallerThreshold, &m_linkvaleBillNumber,
                          &m_selectedCircuitID, &m_reportCaption, &m_reportHeader, &m_wpUserId, &m_billIds})
        text->clear();
    m_hasChanged = true;
}

std::shared_ptr<clsReportParameters> clsReportParameters::Clone() const {
    auto copy = std::make_shared<clsReportParameters>(*this);
    copy->m_dateRangeStart = DateRangeStart();
    copy->m_dateRangeEnd = DateRangeEnd();
    return copy;
}

QString clsReportParameters::ParameterSummary(int reportType, const QString& options) const {
    return parameterSummary(*this, *m_project, reportType, options);
}

bool clsReportParameters::DaySelected(int day) const {
    return at(m_daySelected, day);
}

void clsReportParameters::setDaySelected(int day, bool selected) {
    change(at(m_daySelected, day), selected);
}

QDate clsReportParameters::DateRangeStart() const {
    return m_project->givesDates() && m_project->defaultStart.isValid() ? m_project->defaultStart
                                                                        : m_dateRangeStart;
}

QDate clsReportParameters::DateRangeEnd() const {
    return m_project->givesDates() && m_project->defaultEnd.isValid() ? m_project->defaultEnd
                                                                      : m_dateRangeEnd;
}

bool clsReportParameters::DistanceBandSelected(int band) const {
    return at(m_distanceBandSelected, band);
}

void clsReportParameters::setDistanceBandSelected(int band, bool selected) {
    change(at(m_distanceBandSelected, band), selected);
}

void clsReportParameters::changeThreshold(Threshold& threshold, const QString& text) {
    change(threshold.text, text);
    const std::optional<qint64> amount = thresholdAmount(text);
    if (!amount) throw std::invalid_argument("'" + text.toStdString() + "' is not a number.");
    threshold.amount = *amount;
}

const QString& clsReportParameters::CostCentre(int level) const {
    return at(m_costCentre, level);
}

void clsReportParameters::setCostCentre(int level, const QString& costCentre) {
    change(at(m_costCentre, level), costCentre);
}

void clsReportParameters::setCallFilter(int filter) {
    change(m_callFilter, filter);
    m_distanceBandSelected.fill(false);
}

void clsReportParameters::setAccountFilter(int filter) {
    if (filter == m_accountFilter) return;
    change(m_accountFilter, filter);
    m_serviceNumber.clear();
    m_costCentre.fill({});
}

void clsReportParameters::setWPUserId(const QString& userId) {
    if (userId != m_wpUserId) change(m_wpUserId, userId);
}
