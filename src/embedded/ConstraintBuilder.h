#pragma once

#include "embedded/Ast.h"
#include "embedded/Session.h"

namespace embedded {

/// Keys are unique indexes, so that they can come and go on an existing table.
class ConstraintBuilder {
public:
    ConstraintBuilder(Session& session, const Object& table) : m_session(session), m_table(table) {}

    /// Throws DbError 2714 for a name in use, 1505 when the rows that are there hold duplicates.
    void add(const ConstraintDef& constraint);
    void addIndex(const QString& name, const QStringList& columns, bool unique);
    /// Keys of a table that the catalogue does not hold.
    void addTemporaryKey(const ConstraintDef& constraint, int number);
    /// Removes what add() made in SQLite; the catalogue's entry stays.
    static void remove(Session& session, const Object& part);

private:
    QString freeName(const ConstraintDef& constraint) const;
    void addUnique(qint64 id, const QStringList& columns, ObjectKind kind);
    void setDefault(const QString& column, const QString& value);
    QStringList knownColumns(const QStringList& names) const;

    Session& m_session;
    const Object m_table;
};

/// The server's error (2627, 2601, 8115) for SQLite's message about a refused row.
DbError constraintError(const Session& session, const QString& message);

} // namespace embedded
