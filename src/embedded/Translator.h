#pragma once

#include "embedded/Ast.h"
#include "embedded/FunctionTable.h"

namespace embedded {

/// One table of a FROM clause under translation.
struct Source {
    QString alias; ///< in SQLite, unique in the statement
    QString label; ///< the alias or one-part name that a prefix may use
    bool isAliased = false;
    QString database; ///< folded; for three-part prefixes
    QList<Column> columns;
};

/// The tables that one SELECT sees, and what is known of its grouping.
struct Scope {
    std::vector<Source> sources;
    QSet<QString> groupKeys;
    QStringList ungrouped; ///< columns used outside aggregates and group keys
    bool aggregated = false;
};

/// A statement ready for SQLite.
struct Translation {
    QString sql;
    QStringList variables = {}; ///< what ?1, ?2, … stand for
    QList<Type> types = {};     ///< of the columns it yields
    QStringList names = {};
    QStringList targets = {}; ///< variables that a SELECT assigns, by column; empty otherwise
    bool isOrdered = false;   ///< by an ORDER BY of its own
};

/// Turns one statement into SQLite's: names of any part count, TOP, system views, static types; every value
/// written is converted to its column's type.
class Translator {
public:
    Translator(Session& session, const FunctionTable& functions)
        : m_session(session), m_functions(functions) {}

    Translation select(const Query& query);
    /// A value on its own, as SELECT of one row.
    Translation single(const ExprPtr& expr, const Type& type);
    Translation test(const ExprPtr& condition);
    Translation insert(const InsertStatement& statement, const Object*& table);
    Translation update(const UpdateStatement& statement);
    Translation remove(const DeleteStatement& statement);
    /// Writes one column's value into rows that lack it: what ALTER TABLE needs.
    QString fill(const Object& table, const Column& column, const QString& current, const Type& currentType);

private:
    // Expressions
    Typed value(const ExprPtr& expr);
    Typed translate(const ExprPtr& expr);
    Typed variable(const QString& name);
    Typed column(const QStringList& parts);
    Typed unary(const Expr& expr);
    Typed arithmetic(const QString& op, const Typed& a, const Typed& b) const;
    Typed dateArithmetic(const QString& op, const Typed& a, const Typed& b) const;
    Typed caseWhen(const Expr& expr);
    Typed cast(const Expr& expr);
    /// The expression as the type; in SQL text.
    QString convert(const Typed& from, const Type& to, int style = 0, bool intoColumn = false) const;

    // Function calls
    Typed call(const Expr& expr);
    Typed special(const Expr& expr);
    Typed aggregate(const Expr& expr);
    Typed coalesce(const std::vector<ExprPtr>& args);
    QString argument(const FunctionRule& rule, int place, const ExprPtr& expr, QList<Typed>& typed);

    // Predicates
    QString condition(const ExprPtr& expr);
    QString compare(const QString& op, Typed a, Typed b) const;
    /// A side of a comparison as the type that both meet in.
    Typed comparable(const Typed& side, const Type& type) const;
    QString in(const Expr& expr);
    QString like(const Expr& expr);

    // Queries
    struct Core {
        QString head;
        QList<Typed> items;
        QStringList names;
        QString tail; ///< FROM and the rest
    };
    /// A subquery; the types of its columns go to `types`.
    QString subquery(const Query& query, QList<Type>& types);
    QString assemble(const Query& query, QList<Type>& types, QStringList& names);
    Core core(const SelectCore& select);
    void addStar(const Expr& star, Core& core);
    QString orderBy(const Query& query, const Core& core, bool compound);
    /// FROM's text; its sources go to the innermost scope.
    QString from(const std::vector<TableRefPtr>& tables);
    QString table(const TableRef& ref);
    QString named(const TableRef& ref);
    Source& addSource(const QString& label, bool aliased, const QList<Column>& columns);

    // Writing
    struct Target {
        QList<const Column*> given;
        QList<const Column*> missing;
        QString columnList() const; ///< in brackets, the given ones first
    };
    /// The table that a statement writes to, as the only one in a new scope; throws DbError 208.
    const Object& target(const ObjectName& name);
    Target targetOf(const InsertStatement& statement, const Object& table);
    QString stored(const Typed& value, const Column& column, const Object& table) const;
    QString defaultOf(const Column& column, const Object& table);
    QString rows(const InsertStatement& statement, const Target& target, const Object& table);
    QString selected(const QString& sql, const QList<Type>& types, const Target& target, const Object& table);
    QString assigned(const ExprPtr& expr, const Column& column, const Object& table);

    Session& m_session;
    const FunctionTable& m_functions;
    std::vector<Scope> m_scopes;
    QStringList m_variables;  ///< what ?1, ?2, … stand for
    QSet<QString> m_assigned; ///< variables the statement sets while it reads them
    bool m_readsAssigned = false;
    int m_aliases = 0;
};

/// Adds the collation to a text that does not bring it along.
QString collated(const Typed& typed);
/// The type that two sides of a comparison are compared in; Null when they need no conversion.
Type comparisonType(const Type& a, const Type& b);

} // namespace embedded
