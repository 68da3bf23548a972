#pragma once

#include "embedded/DmlTranslator.h"

namespace embedded {

/// Keys become unique indexes, foreign keys and CHECKs become triggers, so that all of them can come
/// and go on an existing table.
class ConstraintBuilder {
public:
    ConstraintBuilder(Session& session, const FunctionTable& functions, const Object& table)
        : m_session(session), m_functions(functions), m_table(table) {}

    /// Throws DbError 2714 for a name in use, 1505 when the rows that are there hold duplicates, 547 when
    /// they break the constraint.
    void add(const ConstraintDef& constraint);
    void addIndex(const QString& name, const QStringList& columns, bool unique);
    /// Keys of a table that the catalogue does not hold.
    void addTemporaryKey(const ConstraintDef& constraint, int number);
    /// Removes what add() made in SQLite; the catalogue's entry stays.
    static void remove(Session& session, const Object& part);

private:
    QString freeName(const ConstraintDef& constraint) const;
    void addUnique(qint64 id, const QStringList& columns, Object::Kind kind);
    void addForeignKey(qint64 id, const ConstraintDef& constraint);
    void setDefault(const QString& column, const QString& value);
    void addCheck(qint64 id, const ConstraintDef& constraint);
    void createTrigger(qint64 id, int number, const QString& event, const QString& table, const QString& when,
                       const QString& body);
    QStringList knownColumns(const Object& table, const QStringList& names) const;

    Session& m_session;
    const FunctionTable& m_functions;
    const Object m_table;
};

} // namespace embedded
