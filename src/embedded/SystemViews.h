#pragma once

#include "embedded/Catalog.h"

#include <optional>

namespace embedded {

struct SystemView {
    QString sql; ///< a SELECT over the catalogue's tables
    QList<Column> columns;
};

/// sysobjects, syscolumns, sysdatabases and their newer namesakes, as a database sees them; nothing
/// for a name that is no system view, and where there is no database.
std::optional<SystemView> systemView(const ObjectName& name, const Database* database);

} // namespace embedded
