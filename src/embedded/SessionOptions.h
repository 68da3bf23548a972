#pragma once

#include "embedded/Session.h"

namespace embedded {

/// SET option word, both in capitals. Options that steer what this server does not have are accepted
/// where that changes no result; the others are refused.
void setOption(Session& session, const QString& option, const QString& word);

} // namespace embedded
