#pragma once

#include "db/Connection.h"

/// Opens the server that a connection string names: `file:…` the embedded one, anything else by ODBC
/// with the settings kept for this user. Throws DbError.
std::unique_ptr<Server> openServer(const ConnectionString& target);
