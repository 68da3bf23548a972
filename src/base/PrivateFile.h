#pragma once

#include <QByteArray>
#include <QString>

/// Writes a file that only its writer and administrators may read. One that is there already keeps whom an
/// administrator has let in. Why it cannot be done; empty when it is.
QString writePrivately(const QString& path, const QByteArray& content);
