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

/// Turns expressions into SQLite's, with their static types.
class ExpressionTranslator {
public:
    ExpressionTranslator(Session& session, const FunctionTable& functions)
        : m_session(session), m_functions(functions) {}
    virtual ~ExpressionTranslator() = default;

    Typed value(const ExprPtr& expr);
    QString condition(const ExprPtr& expr);
    /// The expression as the type; in SQL text.
    QString convert(const Typed& from, const Type& to, int style = 0, bool intoColumn = false) const;
    /// Names of the variables that ?1, ?2, … stand for.
    const QStringList& variables() const { return m_variables; }

protected:
    /// A subquery; the types of its columns go to `types`.
    virtual QString subquery(const Query& query, QList<Type>& types) = 0;
    Typed column(const QStringList& parts);
    /// Adds the collation to a text that does not bring it along.
    static QString collated(const Typed& typed);

    Session& m_session;
    const FunctionTable& m_functions;
    std::vector<Scope> m_scopes;
    QSet<QString> m_assigned; ///< variables the statement sets while it reads them
    bool m_readsAssigned = false;

private:
    Typed translate(const ExprPtr& expr);
    Typed number(const Expr& expr) const;
    Typed variable(const QString& name);
    Typed unary(const Expr& expr);
    Typed binary(const Expr& expr);
    Typed arithmetic(const QString& op, const Typed& a, const Typed& b) const;
    Typed dateArithmetic(const QString& op, const Typed& a, const Typed& b) const;
    Typed caseWhen(const Expr& expr);
    Typed cast(const Expr& expr);
    Typed call(const Expr& expr);
    Typed special(const Expr& expr);
    Typed aggregate(const Expr& expr);
    Typed coalesce(const std::vector<ExprPtr>& args);
    QString argument(const FunctionRule& rule, int place, const ExprPtr& expr, QList<Typed>& typed);
    QString compare(const QString& op, Typed a, Typed b) const;
    bool canBeNullLiteral(const ExprPtr& expr) const;
    QString in(const Expr& expr);
    QString like(const Expr& expr);
    const Column* find(const Source& source, const QStringList& parts) const;

    QStringList m_variables;
};

/// The type that two sides of a comparison are compared in; Null when they need no conversion.
Type comparisonType(const Type& a, const Type& b);
Type arithmeticType(const QString& op, const Type& a, const Type& b);

} // namespace embedded
