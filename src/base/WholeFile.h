#pragma once

#include <QFile>
#include <optional>

/// Writes a file as a whole: what stood there stays when it cannot be written. Why it cannot, in the system's
/// words; empty when it is written. `access` is set before anything is in it.
[[nodiscard]] QString writeWhole(const QString& path, const QByteArray& content,
                                 std::optional<QFile::Permissions> access = {});
