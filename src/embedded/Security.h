#pragma once

#include "embedded/Ast.h"
#include "embedded/Session.h"

/// Logins, server roles and who may enter a database.
namespace embedded::security {

QStringList serverRoles();
/// The role as the server writes it; throws DbError 15412 for an unknown one.
QString knownRole(const QString& role);
/// Throws DbError 15247 when the session's login is not in the role (or sysadmin).
void require(const Session& session, const char* role);
void run(Session& session, const SecurityStatement& statement);
/// Writes the first login, before there is any session.
void addAdministrator(SqliteFile& file, const QString& login, const QString& password);
/// Sets the session's login and roles; throws DbError 18456. Returns the login's default database.
QString logIn(Session& session, const QString& login, const QString& password);

} // namespace embedded::security
