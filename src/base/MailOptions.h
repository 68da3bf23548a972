#pragma once

#include <QString>

class Connection;

/// The server-wide options of e-mailing, kept in tblOptions. Databases made before them lack the
/// columns: reading then finds nothing set, saving adds them.

/// Where e-mails go that no entry of the address book is for; empty when none is set.
QString readDefaultEmail(Connection& connection);
/// The largest attachment allowed, in megabytes; 0 when there is no limit.
int readMaxFileSize(Connection& connection);
/// The largest attachment allowed, in words: "10 MB" or "Unlimited".
QString GetMaxFileSizeDesc(Connection& connection);

/// Adds the columns that are missing; safe to repeat.
void addMailOptionColumns(Connection& connection);
/// Throws DbError, a Refusal when the address does not fit its column.
void saveMailOptions(Connection& connection, const QString& defaultEmail, int maxFileSize);
