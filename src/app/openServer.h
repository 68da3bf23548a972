#pragma once

#include "db/Connection.h"

/// Opens the server that a connection string names: `file:…` the embedded one, anything else by ODBC
/// with the settings kept for this user. Its statements are recorded where the environment variable
/// ZELVAN_SCHEDULER_STATEMENTS names a file (db/RecordingServer.h). Throws DbError.
std::unique_ptr<Server> openServer(const ConnectionString& target);

/// What protection the way to a server lacks although the settings ask for it, in words; empty when nothing.
QString missingProtection(const QString& dataSource);
