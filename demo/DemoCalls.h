#pragma once

#include "demo/DemoProject.h"

class Connection;

namespace demoCalls {

/// Makes the three tables of a project that hold single calls, empty. An older project lacks the
/// columns that keep several time bands.
void createTables(Connection& connection, const DemoProject& project);

/// Fills them with `count` calls: first the ones around the change of the time bands (31 March and
/// 1 April 2008, and the minutes at which a band ends), then calls at random within the bills' months.
/// The same arguments give the same calls.
void fill(Connection& connection, const DemoProject& project, int count, const QDate& today);

} // namespace demoCalls
