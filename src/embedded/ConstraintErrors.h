#pragma once

#include "embedded/Session.h"

namespace embedded {

/// The server's error (2627, 2601) for SQLite's message about a refused row.
DbError constraintError(const Session& session, const QString& message);

} // namespace embedded
