#pragma once

#include "base/Session.h"
#include "parameters/ProjectLists.h"

#include <algorithm>

/// The cost centres to which the user is restricted, on the levels that restrict him; all empty for a
/// user who may see everything.
inline ProjectLists::CostCentres costCentreLimits(const Session& session) {
    ProjectLists::CostCentres limits;
    if (session.userLevel == UserLevel::Restricted)
        std::copy_n(session.costCentres.begin(), std::min<qsizetype>(5, session.costCentres.size()),
                    limits.begin());
    return limits;
}

inline bool isLimited(const ProjectLists::CostCentres& limits) {
    return std::ranges::any_of(limits, [](const QString& centre) { return !centre.isEmpty(); });
}
