#pragma once

#include <QString>

/// Small values kept for each user between runs, by application, section and key.
QString getSetting(const QString& application, const QString& section, const QString& key,
                   const QString& defaultValue);
/// Why the value could not be kept, with the file's name; empty when it was. The login tells it once in the
/// error log, all others go on without.
QString saveSetting(const QString& application, const QString& section, const QString& key,
                    const QString& value);
