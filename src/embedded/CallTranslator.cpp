// The function calls of Translator.
#include "embedded/Translator.h"

#include "embedded/Errors.h"

namespace embedded {

namespace {

/// The full name of a date part; empty when it is none.
QString datePartName(const QString& written) {
    static const QHash<QString, QString> names = [] {
        QHash<QString, QString> map;
        const QStringList groups{"year yy yyyy", "month mm m", "day dd d",    "week wk ww",
                                 "weekday dw w", "hour hh",    "minute mi n", "second ss s"};
        for (const QString& group : groups)
            for (const QString& name : group.split(u' ')) map.insert(name, group.section(u' ', 0, 0));
        return map;
    }();
    return names.value(written.toLower());
}

Type typeOfLetter(QChar letter, const Type& given) {
    switch (letter.unicode()) {
    case u't':
        return given.isText() ? given : Type::text(8000, false);
    case u'i':
        return Type::of(Type::Int);
    case u'f':
        return Type::of(Type::Float);
    case u'n':
        return given.isNumber() ? given : Type::of(Type::Float);
    case u'd':
        return given.isDate() ? given : Type::of(Type::DateTime);
    default:
        return given;
    }
}

bool isAggregate(const QString& name) {
    static const QSet<QString> names{"count", "count_big", "sum", "avg", "min", "max"};
    return names.contains(name);
}

} // namespace

Typed Translator::call(const Expr& expr) {
    if (isAggregate(expr.text)) return aggregate(expr);
    static const QSet<QString> specials{"isnull", "coalesce", "nullif"};
    if (specials.contains(expr.text)) return special(expr);
    const FunctionRule* rule = m_functions.find(expr.text);
    if (!rule || expr.text == "like") throw notSupported("function " + expr.text.toUpper());
    const int count = int(expr.args.size());
    if (count < rule->minimum() || (rule->maximum() >= 0 && count > rule->maximum()))
        throw serverError(174, "The %1 function does not take %2 argument(s).", expr.text, count);
    QStringList arguments;
    QList<Typed> typed;
    for (int i = 0; i < count; ++i) arguments.append(argument(*rule, i, expr.args[std::size_t(i)], typed));
    return {FunctionTable::nativeName(expr.text) + '(' + arguments.join(u',') + ')', rule->result(typed)};
}

QString Translator::argument(const FunctionRule& rule, int place, const ExprPtr& expr, QList<Typed>& typed) {
    const QChar letter = rule.letter(place);
    if (letter == u'k') {
        const QString written = expr->kind == Expr::Column ? expr->parts.last() : expr->text;
        const QString part = datePartName(written);
        if (part.isEmpty()) throw notSupported("date part " + written);
        typed.append(Typed{sqliteText(part), Type::text(20, false)});
        return typed.last().sql;
    }
    const Typed given = value(expr);
    typed.append(given);
    return convert(given, typeOfLetter(letter, given.type));
}

Typed Translator::special(const Expr& expr) {
    if (expr.text == "coalesce") return coalesce(expr.args);
    if (expr.args.size() != 2) throw serverError(174, "The %1 function requires 2 argument(s).", expr.text);
    const Typed first = value(expr.args[0]);
    const Typed second = value(expr.args[1]);
    if (expr.text == "nullif")
        return {"CASE WHEN " + compare("=", first, second) + " THEN NULL ELSE " + first.sql + " END",
                first.type};
    // ISNULL keeps the first argument's type, so a longer replacement is cut to it.
    const Type type = first.type.kind == Type::Null ? second.type : first.type;
    return {"ifnull(" + first.sql + ',' + convert(second, type) + ')', type};
}

Typed Translator::coalesce(const std::vector<ExprPtr>& args) {
    Type type;
    QList<Typed> values;
    for (const ExprPtr& arg : args) {
        values.append(value(arg));
        type = Type::common(type, values.last().type);
    }
    if (values.size() < 2) throw DbError(174, "The coalesce function requires at least 2 arguments.");
    QStringList converted;
    for (const Typed& typed : values) converted.append(convert(typed, type));
    return {"coalesce(" + converted.join(u',') + ')', type};
}

Typed Translator::aggregate(const Expr& expr) {
    if (expr.args.size() != 1) throw serverError(174, "The %1 function requires 1 argument(s).", expr.text);
    if (m_scopes.empty()) throw DbError(157, "An aggregate may not appear here.");
    const std::size_t own = m_scopes.size() - 1;
    const qsizetype before = m_scopes[own].ungrouped.size();
    const bool isCount = expr.text.startsWith("count");
    const Type countType = Type::of(expr.text == "count" ? Type::Int : Type::BigInt);
    if (isCount && expr.args[0]->kind == Expr::Star) {
        m_scopes[own].aggregated = true;
        return {"count(*)", countType};
    }
    const Typed inner = value(expr.args[0]);
    m_scopes[own].ungrouped.resize(before);
    m_scopes[own].aggregated = true;
    const QString argument = (expr.flag ? "DISTINCT " : "") + collated(inner);
    if (isCount) return {"count(" + argument + ')', countType};
    if (expr.text == "min" || expr.text == "max") return {expr.text + '(' + argument + ')', inner.type};

    Type type = inner.type;
    if (!type.isNumber() || type.kind == Type::Bit)
        throw serverError(8117, "Operand data type %1 is invalid for %2 operator.", type.toString(),
                          expr.text);
    if (type.isInteger() && type.kind != Type::BigInt) type = Type::of(Type::Int);
    if (type.kind == Type::Real) type = Type::of(Type::Float);
    if (expr.text == "avg") {
        if (type.kind == Type::Decimal) type = Type::decimal(38, std::max(6, type.scale));
        const QString sum = "sum(" + argument + ')';
        return {QString("ts_div(%1,nullif(count(%2),0),%3)").arg(sum, argument).arg(type.packed()), type};
    }
    if (type.kind == Type::Decimal) type = Type::decimal(38, type.scale);
    const QString sum = "sum(" + argument + ')';
    if (type.isInteger()) return {QString("ts_range(%1,%2)").arg(sum).arg(type.packed()), type};
    if (type.isExact()) return {QString("ts_places(%1,%2)").arg(sum).arg(type.scale), type};
    return {sum, type};
}

} // namespace embedded
