#include "templates/NewReport.h"

#include "base/Session.h"
#include "parameters/CostCentreLimits.h"
#include "reports/AccountFilter.h"
#include "reports/CallFilter.h"

namespace {

void suitLines(clsReportParameters& parameters, int reportType, const CatalogueEntry& entry) {
    if (entry.lines.empty()) return;
    // The line filter that some bills start with says nothing of mobiles.
    if (reportType != MobileReport && entry.takesCallsFrom(parameters.CallFilter())) return;
    for (const int filter : {AllLinesAndMobiles, AllLines, AllLinesVoiceOnly, AllLinesDataOnly}) {
        if (!entry.takesCallsFrom(filter)) continue;
        parameters.setCallFilter(filter); // unselects the bands
        for (int band = 1; band <= distanceBands::Count; ++band)
            parameters.setDistanceBandSelected(band, true);
        return;
    }
}

} // namespace

std::shared_ptr<clsReportParameters> newParameters(const Session& session, int reportType,
                                                   const CatalogueEntry& entry) {
    auto parameters = std::make_shared<clsReportParameters>(session.project);
    suitLines(*parameters, reportType, entry);
    const ProjectLists::CostCentres limits = costCentreLimits(session);
    if (entry.offers(AccountsGroup) && isLimited(limits)) {
        parameters->setAccountFilter(SeveralCostCentreLevels);
        for (int level = 1; level <= 5; ++level)
            parameters->setCostCentre(level, limits[std::size_t(level) - 1]);
    }
    return parameters;
}
