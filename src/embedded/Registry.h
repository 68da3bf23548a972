#pragma once

#include "embedded/Sqlite.h"

/// The server's registry, kept in the server file. Keys match whatever slashes close them.
namespace embedded::registry {

/// NULL when there is no such value.
Value read(SqliteFile& file, const QString& hive, const QString& key, const QString& name);
void write(SqliteFile& file, const QString& hive, const QString& key, const QString& name,
           const QString& type, const QString& data);

} // namespace embedded::registry
