#pragma once

#include "base/WallClock.h"

class Connection;

namespace schedulerContent {

/// Fills an empty NorvaScheduler: templates of every kind, schedules in every state with run dates
/// around `now`, odd rows that other programs have left, logs, addresses, excluded numbers, options.
void fill(Connection& connection, const WallClock& now);

/// Adds `schedules` of the administrator, pending, disabled and finished, over `templates` (at least one) new
/// templates with `reportsPerTemplate` reports each, in few statements.
void fillSchedules(Connection& connection, int schedules, int templates, int reportsPerTemplate);

} // namespace schedulerContent
