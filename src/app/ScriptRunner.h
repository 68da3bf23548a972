#pragma once

#include <QString>

class Connection;

/// Executes a file of statements in batches that lines "GO" (in any case) end; the last batch needs
/// none. Lines are joined with CR LF. Throws a Refusal when the file cannot be read (naming it), a DbError
/// when a batch fails (naming its place); the batches before it stay executed. The session is closed
/// afterwards, for what a script has set in it (another database, an open transaction) must not meet what
/// follows.
void runScript(Connection& connection, const QString& path);

/// The file whole, its lines joined with CR LF; throws a Refusal when it cannot be read.
QString readScript(const QString& path);

/// Runs the administrator's "jobs.sql" of the folder, when it is there, and deletes it, also after a
/// failure of a batch: it is meant to run once. What failed or was not run any more is added to
/// "jobs.sql.failed" then. Returns what failed, with the batch, empty when nothing did.
QString runJobs(Connection& connection, const QString& folder);
