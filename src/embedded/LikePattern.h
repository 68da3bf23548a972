#pragma once

#include <QString>

namespace embedded {

/// LIKE with %, _, [a-z] and [^…], without regard to case; `escape` is null when there is none.
bool matchesLike(QStringView text, QStringView pattern, QChar escape = {});

} // namespace embedded
