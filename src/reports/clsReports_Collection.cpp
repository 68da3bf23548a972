#include "reports/clsReports_Collection.h"

#include "reports/AccountFilter.h"

#include <algorithm>
#include <stdexcept>

clsReport& clsReports_Collection::Add(int id, std::shared_ptr<clsReportParameters> parameters, int reportType,
                                      int reportSubType, bool outputExcel, bool outputCSV, bool outputEmail,
                                      QString& key) {
    auto report = std::make_unique<clsReport>(*m_project);
    report->setParameters(std::move(parameters));
    report->setID(id);
    report->setReportType(reportType);
    report->setReportSubType(reportSubType);
    report->setOutputExcel(outputExcel);
    report->setOutputCSV(outputCSV);
    report->setOutputEmail(outputEmail);
    if (reportType == CallReport && report->Parameters()->AccountFilter() == RestrictedSelection
        && !reportAcceptsRestrictedSelection(reportSubType))
        report->Parameters()->setAccountFilter(AllAccounts);

    key = freeKey(key);
    m_usedKeys.insert(key.toLower());
    m_reports.push_back({key, std::move(report)});
    return *m_reports.back().report;
}

QString clsReports_Collection::freeKey(const QString& wanted) const {
    QString candidate = wanted;
    for (int number = Count(); candidate.isEmpty() || m_usedKeys.contains(candidate.toLower()); ++number)
        candidate = "ID" + QString::number(number);
    return candidate;
}

void clsReports_Collection::Clear() {
    m_reports.clear();
    m_usedKeys.clear();
}

void clsReports_Collection::Move(int from, int to) {
    const auto moved = m_reports.begin() + std::ptrdiff_t(place(from));
    const auto target = m_reports.begin() + std::ptrdiff_t(place(to));
    if (moved < target)
        std::rotate(moved, moved + 1, target + 1);
    else
        std::rotate(target, moved, moved + 1);
}

std::size_t clsReports_Collection::place(const QString& key) const {
    const auto found = std::ranges::find_if(
        m_reports, [&](const Keyed& keyed) { return keyed.key.compare(key, Qt::CaseInsensitive) == 0; });
    if (found == m_reports.end()) throw std::out_of_range("no report has this key");
    return std::size_t(found - m_reports.begin());
}

std::size_t clsReports_Collection::place(int position) const {
    if (position < 1 || position > Count()) throw std::out_of_range("no report is at this position");
    return std::size_t(position) - 1;
}

void clsReports_Collection::removeAt(std::size_t place) {
    m_usedKeys.remove(m_reports[place].key.toLower());
    m_reports.erase(m_reports.begin() + std::ptrdiff_t(place));
}
