#pragma once

#include "db/OdbcHandle.h"
#include "db/RecordSet.h"

/// Reads the statement's current result, rows or a row count, to its end and appends it. False when
/// the driver reports an error; the statement's diagnostic then tells which.
bool readResult(const OdbcHandle& statement, Results& results);
