#pragma once

#include <QString>

/// Small values kept for each user between runs, by application, section and key: in the registry of Windows,
/// elsewhere in a file for each application.
QString getSetting(const QString& application, const QString& section, const QString& key,
                   const QString& defaultValue);
/// Why the value could not be kept, with the store's name; empty when it was. The login tells it once in the
/// error log, all others go on without.
QString saveSetting(const QString& application, const QString& section, const QString& key,
                    const QString& value);
/// From now on they are files in a folder of their own, on every system: a trial must neither meet nor change
/// what its user set.
void keepSettingsIn(const QString& folder);
