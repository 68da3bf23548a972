#pragma once

struct Session;

/// Reads the server-wide options into the session and writes them to the error log; an empty table
/// reads as no path and no default outputs.
void ReadGlobalOptions(Session& session);
