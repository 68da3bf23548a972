#pragma once

#include <QFile>
#include <optional>

/// A name or title as part of a file name. What no file system takes is left out, and one that would grow
/// too long is cut; its mark tells it from others that begin alike.
QString safeFileName(QString name);

/// Writes a file as a whole: what stood there stays when it cannot be written. Why it cannot, in the system's
/// words; empty when it is written. `access` is set before anything is in it.
[[nodiscard]] QString writeWhole(const QString& path, const QByteArray& content,
                                 std::optional<QFile::Permissions> access = {});
