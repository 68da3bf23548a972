#include "reports/ReportTraits.h"

#include "reports/Catalogue.h"

#include <algorithm>
#include <iterator>

namespace {

/// A code is the report's identifier times ten plus the number of a variant.
constexpr qint64 restrictedSelectionCodes[] = {
    1110, 1120, 1130, 1131, 1140, 1150, 1160, 1210, 1220,  1230,  1231,  1240,  1250,  1410, 1420,
    1450, 1460, 1470, 1600, 1610, 1611, 1612, 1613, 1620,  1621,  1630,  1660,  1661,  1690, 1691,
    1700, 1701, 1702, 1910, 1911, 1912, 1920, 1921, 14200, 14209, 14600, 16121, 16122,
};

} // namespace

bool reportAcceptsRestrictedSelection(int reportSubType) {
    return std::ranges::find(restrictedSelectionCodes, qint64(reportSubType) * 10)
           != std::end(restrictedSelectionCodes);
}

bool isTaggedCallReport(int reportSubType) {
    return reportSubType == 191 || reportSubType == 192;
}

bool isHandsetReport(int reportType, int reportSubType) {
    return reportType == MobileReport && (reportSubType == 195 || reportSubType == 196);
}
