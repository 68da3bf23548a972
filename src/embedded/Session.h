#pragma once

#include "embedded/Catalog.h"
#include "embedded/DateText.h"

#include <QDateTime>
#include <QLockFile>
#include <map>

namespace embedded {

struct Query;

struct Variable {
    Type type;
    Value value;
    QString cursor; ///< of a cursor variable: the cursor it stands for
};

struct Cursor {
    std::shared_ptr<const Query> query;
    std::map<QString, Variable> captured; ///< as they were when it was declared
    std::vector<std::vector<Value>> rows; ///< read whole when it is opened
    QList<Type> types;
    std::size_t next = 0; ///< the row that FETCH will yield
    bool open = false;
};

/// The variables, table variables and local temporary tables of a running batch or procedure.
struct Frame {
    std::map<QString, Variable> variables; ///< by folded name
    std::map<QString, Object> tables;      ///< table variables and #tables made here, by folded name
    QStringList cursors;                   ///< declared here; in a procedure they end with it
    Value returnValue = qint64(0);
    std::optional<DbError> error; ///< that a CATCH block is handling
};

/// The state of one connection.
struct Session {
    explicit Session(const QString& path) : file(path, SqliteFile::Mode::Existing), catalog(file) {}

    SqliteFile file;
    Catalog catalog;
    QString login;
    QSet<QString> roles; ///< folded server roles of the login
    qint64 database = 1; ///< the current one; see enter

    bool noCount = false;
    bool abortOnError = false;
    bool ansiNulls = true;
    bool quotedIdentifiers = true;
    dateText::Order dateOrder = dateText::Order::MonthDayYear;
    QString identityInsert; ///< storage of the table that takes explicit identity values

    int transactionDepth = 0;
    qint64 rowCount = 0;
    int fetchStatus = 0;
    int lastError = 0;
    Value identity;
    QDateTime statementTime;
    int nextStorage = 0; ///< numbers the session's temporary tables

    std::vector<Frame> frames;
    std::map<QString, Cursor> cursors; ///< by folded name

    void enter(qint64 target);
    /// Whether any session, of any program, has the database as its current one.
    bool isInUse(qint64 target) const;
    bool isInRole(const char* role) const { return roles.contains("sysadmin") || roles.contains(role); }
    bool canEnter(const Database& target) const;
    /// The database of that name, the current one for an empty name; null when there is none. Throws DbError
    /// 916.
    const Database* reach(const QString& name) const;
    /// Likewise, but throws DbError 911 when there is none.
    const Database& databaseNamed(const QString& name) const;
    const Database& currentDatabase() const { return *catalog.databases().constFind(database); }
    /// What a name means: a temporary table in reach, or an object of the named or current database; null
    /// when there is none. Throws DbError 916.
    const Object* find(const ObjectName& name) const;
    /// A table variable or #table in reach; null when there is none.
    const Object* temporary(const QString& name) const;
    /// Throws DbError 137.
    Variable& variable(const QString& name);
    /// @x, or one of the @@ values.
    Value valueOf(const QString& name);
    Type typeOf(const QString& name);
    Variable serverValue(const QString& name) const;

private:
    QString presenceFiles(std::optional<qint64> target) const;
    static bool anyoneAlive(const QString& beginning);
    /// Shows other sessions that this one is in its database, as long as it lives.
    std::unique_ptr<QLockFile> m_presence;
};

} // namespace embedded
