#include "reports/DistanceBands.h"

#include "reports/BillType.h"
#include "reports/CallFilter.h"

#include <algorithm>
#include <iterator>

namespace distanceBands {

namespace {

constexpr const char* names[] = {
    "Line to Local",
    "Line to National",
    "Line to Mobile",
    "Line to International",
    "Line to Other",
    "Mobile to UK",
    "Mobile to International",
    "Mobile Data",
    "Mobile Fax",
    "Mobile SMS",
    "Mobile Roamed",
    "Mobile to Internet",
    "Mobile to Mobile",
    "Mobile to Mobile On-Net",
    "Mobile to Land Line On-Net",
    "Mobile to Voicemail",
    "Mobile to Other",
    "Domestic On-net",
    "Domestic Off-net",
    "Domestic Mobile",
    "International On-net",
    "International Off-net",
    "International Mobile",
};
static_assert(std::size(names) == Count);

} // namespace

QString name(int index) {
    return index >= 1 && index <= Count ? QString(names[index - 1]) : QString();
}

int byName(const QString& name) {
    const auto found =
        std::ranges::find_if(names, [&](const char* band) { return name == QLatin1StringView(band); });
    return found == std::end(names) ? 0 : int(found - std::begin(names)) + 1;
}

Range suiting(int callFilter, int billType) {
    // An IDC bill sorts all its calls into bands of its own, whatever line they were made from.
    if (billType == IdcBill) return Idc;
    switch (callFilter) {
    case AllLines:
    case AllLinesDataOnly:
    case AllLinesVoiceOnly:
        return FixedLine;
    case AllMobiles:
        return Mobile;
    default:
        return {FixedLine.first, Mobile.last};
    }
}

} // namespace distanceBands
