#pragma once

#include <QStringList>

class Connection;

namespace centralDatabases {

/// Makes the analysis product's databases beside the projects: users, settings, call classes, and
/// those that only have to be there; and a database that belongs to another program.
void create(Connection& connection);

QStringList names();

} // namespace centralDatabases
