#pragma once

#include "embedded/QueryTranslator.h"

namespace embedded {

/// Turns INSERT, UPDATE and DELETE into SQLite's: every value written is converted to its column's type.
class DmlTranslator : public QueryTranslator {
public:
    using QueryTranslator::QueryTranslator;

    Translation insert(const InsertStatement& statement, const Object*& table);
    Translation update(const UpdateStatement& statement);
    Translation remove(const DeleteStatement& statement);
    /// Writes one column's value into rows that lack it: what ALTER TABLE needs.
    QString fill(const Object& table, const Column& column, const QString& current, const Type& currentType);

private:
    struct Target {
        QList<const Column*> given;
        QList<const Column*> missing;
    };
    Target targetOf(const InsertStatement& statement, const Object& table);
    QString stored(const Typed& value, const Column& column, const Object& table) const;
    QString defaultOf(const Column& column, const Object& table);
    QString rows(const InsertStatement& statement, const Target& target, const Object& table);
    QString selected(const QString& sql, const QList<Type>& types, const Target& target, const Object& table);
    QString columnList(const Target& target) const;
    Typed assigned(const Assignment& assignment, const Column& column, const Object& table);
};

} // namespace embedded
