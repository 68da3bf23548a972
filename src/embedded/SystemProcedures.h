#pragma once

#include "embedded/Executor.h"

namespace embedded {

/// Runs one of the server's own procedures; false when it knows none of that name.
bool systemProcedure(Session& session, const QString& name, std::vector<CallArgument>& arguments,
                     Results& results);

} // namespace embedded
