#pragma once

#include <QString>

/// Small values kept for each user between runs, by application, section and key.
QString getSetting(const QString& application, const QString& section, const QString& key,
                   const QString& defaultValue);
void saveSetting(const QString& application, const QString& section, const QString& key,
                 const QString& value);
