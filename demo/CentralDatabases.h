#pragma once

class Connection;

namespace centralDatabases {

/// Makes the analysis product's databases beside the projects: users, settings, call classes, and
/// those that only have to be there; and a database that belongs to another program.
void create(Connection& connection);

} // namespace centralDatabases
