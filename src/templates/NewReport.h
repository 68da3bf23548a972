#pragma once

#include "reports/clsReport.h"

struct Session;

/// The parameters that a newly chosen report starts with: the defaults, for lines that the report runs
/// for, and within the cost centres to which the user is restricted.
std::shared_ptr<clsReportParameters> newParameters(const Session& session, int reportType,
                                                   const CatalogueEntry& entry);
