#pragma once

#include "embedded/ExpressionTranslator.h"

namespace embedded {

/// A statement ready for SQLite.
struct Translation {
    QString sql;
    QStringList variables; ///< what ?1, ?2, … stand for
    QList<Type> types;     ///< of the columns it yields
    QStringList names;
    QStringList targets; ///< variables that a SELECT assigns, by column; empty otherwise
};

/// Turns SELECT into SQLite's: names of any part count, TOP and system views.
class QueryTranslator : public ExpressionTranslator {
public:
    using ExpressionTranslator::ExpressionTranslator;

    Translation select(const Query& query);
    /// A value on its own, as SELECT of one row.
    Translation single(const ExprPtr& expr, const Type& type);
    Translation test(const ExprPtr& condition);

protected:
    struct Core {
        QString head;
        QList<Typed> items;
        QStringList names;
        QString tail; ///< FROM and the rest
        ExprPtr top;
        bool distinct = false;
    };

    QString subquery(const Query& query, QList<Type>& types) override;
    QString assemble(const Query& query, QList<Type>& types, QStringList& names);
    Core core(const SelectCore& select);
    /// FROM's text; its sources go to the innermost scope.
    QString from(const std::vector<TableRefPtr>& tables);
    QString table(const TableRef& ref);
    /// The table that a statement writes to, as the only one in a new scope; throws DbError 208.
    const Object& target(const ObjectName& name);
    Source& addSource(const QString& label, bool aliased, const QList<Column>& columns);
    QString nextAlias() { return 't' + QString::number(++m_aliases); }

private:
    QString named(const TableRef& ref);
    void addStar(const Expr& star, Core& core);
    void checkGrouping(const QStringList& ungrouped) const;
    QString orderBy(const Query& query, const Core& core, bool compound);
    static QString nameOf(const SelectItem& item);

    int m_aliases = 0;
};

} // namespace embedded
