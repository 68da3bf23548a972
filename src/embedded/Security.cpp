#include "embedded/Security.h"

#include "embedded/Collation.h"
#include "embedded/Errors.h"

#include <sodium.h>

namespace embedded::security {

namespace {

QString hashOf(const QString& password) {
    if (sodium_init() < 0) throw DbError(0, "The cipher library cannot be used.");
    char hash[crypto_pwhash_STRBYTES];
    const QByteArray utf8 = password.toUtf8();
    if (crypto_pwhash_str(hash, utf8.constData(), static_cast<unsigned long long>(utf8.size()),
                          crypto_pwhash_OPSLIMIT_MIN, crypto_pwhash_MEMLIMIT_MIN)
        != 0)
        throw DbError(0, "The password could not be stored: out of memory.");
    return QString::fromLatin1(hash);
}

bool matches(const QString& hash, const QString& password) {
    if (sodium_init() < 0) return false;
    const QByteArray stored = hash.toLatin1();
    const QByteArray utf8 = password.toUtf8();
    return crypto_pwhash_str_verify(stored.constData(), utf8.constData(),
                                    static_cast<unsigned long long>(utf8.size()))
           == 0;
}

void addLogin(SqliteFile& file, const QString& name, const QString& password, const QString& database) {
    file.run(R"(INSERT INTO "~logins" (name, hash, default_database) VALUES (?1, ?2, ?3))",
             {name, hashOf(password), database});
}

bool loginExists(SqliteFile& file, const QString& name) {
    return std::get<qint64>(file.scalar(R"(SELECT count(*) FROM "~logins" WHERE name = ?1)", {name})) > 0;
}

void createUser(Session& session, const SecurityStatement& statement) {
    if (!loginExists(session.file, statement.role))
        throw serverError(15007, "'%1' is not a valid login or you do not have permission.", statement.role);
    if (!collation::equal(statement.name, statement.role))
        throw notSupported("a user named unlike its login");
    if (session.currentDatabase().access.contains(collation::fold(statement.name)))
        throw serverError(15023, "User, group, or role '%1' already exists in the current database.",
                          statement.name);
    session.catalog.setAccess(session.database, statement.name, true);
}

void changeMember(Session& session, const SecurityStatement& statement, bool add) {
    require(session, "sysadmin");
    const QString role = knownRole(statement.role);
    if (!loginExists(session.file, statement.name))
        throw serverError(15007, "'%1' is not a valid login or you do not have permission.", statement.name);
    session.file.run(R"(DELETE FROM "~members" WHERE role = ?1 AND login = ?2)", {role, statement.name});
    if (add) session.file.run(R"(INSERT INTO "~members" VALUES (?1, ?2))", {role, statement.name});
}

void createLogin(Session& session, const SecurityStatement& statement) {
    require(session, "securityadmin");
    if (loginExists(session.file, statement.name))
        throw serverError(15025, "The server principal '%1' already exists.", statement.name);
    if (statement.password.isEmpty())
        throw DbError(15116, "Password validation failed: the password is empty.");
    addLogin(session.file, statement.name, statement.password, statement.defaultDatabase);
}

void dropLogin(Session& session, const SecurityStatement& statement) {
    require(session, "securityadmin");
    if (!loginExists(session.file, statement.name))
        throw serverError(15151, "Cannot find the login '%1'.", statement.name);
    if (collation::equal(session.login, statement.name))
        throw serverError(15434, "Could not drop login '%1' as the user is currently logged in.",
                          statement.name);
    session.catalog.removeLogin(statement.name);
    session.file.run(R"(DELETE FROM "~members" WHERE login = ?1)", {statement.name});
    session.file.run(R"(DELETE FROM "~logins" WHERE name = ?1)", {statement.name});
}

} // namespace

QStringList serverRoles() {
    return {"sysadmin",     "securityadmin", "serveradmin", "setupadmin",
            "processadmin", "diskadmin",     "dbcreator",   "bulkadmin"};
}

QString knownRole(const QString& role) {
    for (const QString& known : serverRoles())
        if (collation::equal(known, role)) return known;
    throw serverError(15412, "'%1' is not a known fixed role.", role);
}

void require(const Session& session, const char* role) {
    if (!session.isInRole(role))
        throw DbError(15247, "User does not have permission to perform this action.");
}

void run(Session& session, const SecurityStatement& statement) {
    switch (statement.action) {
    case SecurityStatement::CreateLogin:
        return createLogin(session, statement);
    case SecurityStatement::DropLogin:
        return dropLogin(session, statement);
    case SecurityStatement::AddMember:
        return changeMember(session, statement, true);
    case SecurityStatement::DropMember:
        return changeMember(session, statement, false);
    case SecurityStatement::CreateUser:
        return createUser(session, statement);
    case SecurityStatement::Deny:
        require(session, "securityadmin");
        if (!session.currentDatabase().access.contains(collation::fold(statement.name)))
            throw serverError(15151, "Cannot find the user '%1'.", statement.name);
        return session.catalog.setAccess(session.database, statement.name, false);
    }
}

void addAdministrator(SqliteFile& file, const QString& login, const QString& password) {
    addLogin(file, login, password, {});
    file.run(R"(INSERT INTO "~members" VALUES ('sysadmin', ?1))", {login});
}

QString logIn(Session& session, const QString& login, const QString& password) {
    SqliteStatement row = session.file.prepare(
        R"(SELECT name, hash, default_database FROM "~logins" WHERE name = ?1)", {login});
    if (!row.step() || !matches(row.text(1), password))
        throw serverError(DbError::LoginFailed, "Login failed for user '%1'.", login);
    session.login = row.text(0);
    SqliteStatement roles = session.file.prepare(R"(SELECT role FROM "~members" WHERE login = ?1)", {login});
    while (roles.step()) session.roles.insert(collation::fold(roles.text(0)));
    return row.text(2);
}

} // namespace embedded::security
