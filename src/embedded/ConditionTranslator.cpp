// The predicates of Translator.
#include "embedded/Translator.h"

#include "embedded/Errors.h"

namespace embedded {

namespace {

bool canBeNullLiteral(const ExprPtr& expr) {
    return expr->kind == Expr::Null || expr->kind == Expr::Variable;
}

} // namespace

Type comparisonType(const Type& a, const Type& b) {
    const auto family = [](const Type& type) {
        return type.isText() ? 0 : type.isNumber() ? 1 : type.isDate() ? 2 : 3;
    };
    if (a.kind == Type::Null || b.kind == Type::Null || family(a) == family(b)) return {};
    if (a.isDate() || b.isDate()) return Type::of(Type::DateTime);
    const Type number = a.isNumber() ? a : b;
    return number.kind == Type::Decimal ? Type::of(Type::Float) : number;
}

QString Translator::condition(const ExprPtr& expr) {
    const auto& args = expr->args;
    switch (expr->kind) {
    case Expr::And:
        return '(' + condition(args[0]) + " AND " + condition(args[1]) + ')';
    case Expr::Or:
        return '(' + condition(args[0]) + " OR " + condition(args[1]) + ')';
    case Expr::Not:
        return "(NOT " + condition(args[0]) + ')';
    case Expr::Compare: {
        const bool matchesNull =
            !m_session.ansiNulls && (canBeNullLiteral(args[0]) || canBeNullLiteral(args[1]));
        QString op = expr->text;
        if (matchesNull && op == "=") op = "IS";
        if (matchesNull && op == "<>") op = "IS NOT";
        return compare(op, value(args[0]), value(args[1]));
    }
    case Expr::IsNull:
        return '(' + value(args[0]).sql + (expr->flag ? " IS NOT NULL)" : " IS NULL)");
    case Expr::Like:
        return like(*expr);
    case Expr::In:
        return in(*expr);
    case Expr::Between: {
        const QString both = '(' + compare(">=", value(args[0]), value(args[1])) + " AND "
                             + compare("<=", value(args[0]), value(args[2])) + ')';
        return expr->flag ? "(NOT " + both + ')' : both;
    }
    case Expr::Exists: {
        QList<Type> types;
        return "EXISTS (" + subquery(*expr->query, types) + ')';
    }
    default:
        throw DbError(4145, "An expression of non-boolean type specified where a condition is expected.");
    }
}

Typed Translator::comparable(const Typed& side, const Type& type) const {
    const bool converts = side.type.isText() || (type.isDate() && !side.type.isDate());
    return converts && type.kind != Type::Null ? Typed{convert(side, type), type} : side;
}

QString Translator::compare(const QString& op, Typed a, Typed b) const {
    const Type type = comparisonType(a.type, b.type);
    a = comparable(a, type);
    b = comparable(b, type);
    const bool needsCollation = a.type.isText() && !a.isColumn && !b.isColumn;
    return '(' + a.sql + (needsCollation ? " COLLATE T " : " ") + op + ' ' + b.sql + ')';
}

QString Translator::like(const Expr& expr) {
    const Type text = Type::text(Type::Max, true);
    QStringList arguments;
    for (const ExprPtr& arg : expr.args) arguments.append(convert(value(arg), text));
    const QString sql = "ts_like(" + arguments.join(u',') + ')';
    return expr.flag ? "(NOT " + sql + ')' : sql;
}

QString Translator::in(const Expr& expr) {
    Typed left = value(expr.args[0]);
    const QString word = expr.flag ? " NOT IN (" : " IN (";
    if (expr.query) {
        QList<Type> types;
        QString sql = subquery(*expr.query, types);
        if (types.size() != 1) throw DbError(116, "Only one expression can be specified in this subquery.");
        const Type type = comparisonType(left.type, types[0]);
        left = comparable(left, type);
        if (const QString value = comparable({"v", types[0]}, type).sql; value != "v")
            sql = "SELECT " + value + " FROM (WITH w(v) AS (" + sql + ") SELECT v FROM w)";
        return '(' + collated(left) + word + sql + "))";
    }
    QStringList plain;
    QStringList comparisons;
    bool allAlike = true;
    for (std::size_t i = 1; i < expr.args.size(); ++i) {
        const Typed item = value(expr.args[i]);
        allAlike &= comparisonType(left.type, item.type).kind == Type::Null;
        plain.append(item.sql);
        comparisons.append(compare("=", left, item));
    }
    if (allAlike) return '(' + collated(left) + word + plain.join(u',') + "))";
    const QString any = '(' + comparisons.join(" OR ") + ')';
    return expr.flag ? "(NOT " + any + ')' : any;
}

} // namespace embedded
