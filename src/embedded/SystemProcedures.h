#pragma once

#include "embedded/Executor.h"

namespace embedded {

/// Runs one of the server's own procedures; false when it knows none of that name.
bool systemProcedure(Session& session, const QString& name, std::vector<CallArgument>& arguments,
                     Results& results);

/// A value of the server's registry, which is kept in its file; NULL when there is none. Keys match whatever
/// slashes close them.
Value registryValue(SqliteFile& file, const QString& hive, const QString& key, const QString& name);

} // namespace embedded
