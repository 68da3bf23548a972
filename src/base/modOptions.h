#pragma once

struct GlobalOptions;
struct Session;

/// Reads the server-wide options into the session and writes them to the error log; an empty table
/// reads as no path and no default outputs.
void ReadGlobalOptions(Session& session);

/// Stores the options in the table's one row, which is made when it is missing, and reads them again.
/// Throws DbError, a Refusal when the path does not fit its column.
void SaveGlobalOptions(Session& session, const GlobalOptions& options);

/// Only users of level 1 may change the options.
bool mayChangeOptions(const Session& session);
