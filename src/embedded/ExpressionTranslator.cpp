#include "embedded/Translator.h"

#include "embedded/Collation.h"
#include "embedded/Conversion.h"
#include "embedded/Errors.h"

namespace embedded {

namespace {

const Column* find(const Source& source, const QStringList& parts) {
    if (parts.size() > 1) {
        if (!collation::equal(parts[parts.size() - 2], source.label)) return nullptr;
        if (parts.size() > 2 && source.isAliased) return nullptr;
        if (parts.size() == 4 && !parts[0].isEmpty() && collation::fold(parts[0]) != source.database)
            return nullptr;
    }
    return columnNamed(source.columns, parts.last());
}

Type arithmeticType(const QString& op, const Type& a, const Type& b) {
    if (a.kind == Type::Null || b.kind == Type::Null) {
        const Type known = a.kind == Type::Null ? b : a;
        return known.kind == Type::Null || known.kind == Type::Bit ? Type::of(Type::Int) : known;
    }
    if (!a.isNumber() || !b.isNumber())
        throw serverError(8117, "Operand data type %1 is invalid for the operator %2.",
                          (a.isNumber() ? b : a).toString(), op);
    if (a.kind == Type::Float || b.kind == Type::Float) return Type::of(Type::Float);
    if (a.kind == Type::Real || b.kind == Type::Real)
        return Type::of(a.kind == b.kind ? Type::Real : Type::Float);
    if (a.isInteger() && b.isInteger()) {
        const Type wider = a.kind >= b.kind ? a : b;
        const bool counts = wider.kind == Type::Bit && !QString("&|").contains(op);
        return Type::of(counts ? Type::Int : wider.kind);
    }
    if (a.kind != Type::Decimal && b.kind != Type::Decimal) return Type::of(Type::Money);
    const int p1 = a.digits(), s1 = a.scale, p2 = b.digits(), s2 = b.scale;
    if (op == "*") return Type::decimal(p1 + p2 + 1, s1 + s2);
    if (op == "/") {
        const int scale = std::max(6, s1 + p2 + 1);
        const int whole = p1 - s1 + s2;
        // Beyond 38 digits places give way, down to six.
        return Type::decimal(whole + scale, whole + scale > 38 ? std::max(6, 38 - whole) : scale);
    }
    const int scale = std::max(s1, s2);
    return Type::decimal(std::max(p1 - s1, p2 - s2) + scale + 1, scale);
}

} // namespace

Typed Translator::value(const ExprPtr& expr) {
    const std::size_t depth = m_scopes.size();
    const qsizetype before = depth ? m_scopes.back().ungrouped.size() : 0;
    Typed typed = translate(expr);
    if (depth && m_scopes.back().groupKeys.contains(typed.sql)) m_scopes.back().ungrouped.resize(before);
    return typed;
}

Typed Translator::translate(const ExprPtr& expr) {
    switch (expr->kind) {
    case Expr::Number:
        return {expr->text.startsWith(u'.') ? '0' + expr->text : expr->text, expr->type};
    case Expr::Text: {
        const QString text = expr->type.isUnicode() ? expr->text : inCodePage1252(expr->text);
        return {sqliteText(text), expr->type};
    }
    case Expr::Null:
        return {"NULL", {}};
    case Expr::Column:
        return column(expr->parts);
    case Expr::Variable:
        return variable(expr->text);
    case Expr::Unary:
        return unary(*expr);
    case Expr::Binary:
        return arithmetic(expr->text, value(expr->args[0]), value(expr->args[1]));
    case Expr::Call:
        return call(*expr);
    case Expr::Cast:
        return cast(*expr);
    case Expr::Case:
        return caseWhen(*expr);
    case Expr::Subquery: {
        QList<Type> types;
        const QString sql = subquery(*expr->query, types);
        if (types.size() != 1) throw DbError(116, "Only one expression can be specified in this subquery.");
        return {'(' + sql + ')', types[0]};
    }
    case Expr::Star:
        throw DbError(102, "Incorrect syntax near '*'.");
    default:
        throw DbError(102, "Incorrect syntax: a condition stands where a value is expected.");
    }
}

Typed Translator::variable(const QString& name) {
    const Type type = m_session.typeOf(name);
    const QString folded = collation::fold(name);
    if (m_assigned.contains(folded)) {
        m_readsAssigned = true;
        return {"ts_variable(" + sqliteText(name) + ')', type};
    }
    qsizetype place = m_variables.indexOf(folded);
    if (place < 0) {
        place = m_variables.size();
        m_variables.append(folded);
    }
    return {'?' + QString::number(place + 1), type};
}

Typed Translator::column(const QStringList& parts) {
    for (auto scope = m_scopes.rbegin(); scope != m_scopes.rend(); ++scope) {
        const Source* owner = nullptr;
        const Column* found = nullptr;
        for (const Source& source : scope->sources) {
            const Column* candidate = find(source, parts);
            if (!candidate) continue;
            if (found) throw serverError(209, "Ambiguous column name '%1'.", parts.last());
            found = candidate;
            owner = &source;
        }
        if (!found) continue;
        const QString sql = owner->alias + '.' + sqliteName(found->name);
        if (!scope->groupKeys.contains(sql)) scope->ungrouped.append(found->name);
        return {sql, found->type, true};
    }
    const bool isLonePrefix = parts.size() > 1;
    bool knownPrefix = false;
    for (const Scope& scope : m_scopes)
        for (const Source& source : scope.sources)
            knownPrefix |= isLonePrefix && collation::equal(parts[parts.size() - 2], source.label);
    if (isLonePrefix && !knownPrefix)
        throw serverError(4104, "The multi-part identifier \"%1\" could not be bound.", parts.join(u'.'));
    throw invalidColumn(parts.last());
}

QString collated(const Typed& typed) {
    const bool needed = typed.type.isText() && !typed.isColumn;
    return needed ? typed.sql + " COLLATE T" : typed.sql;
}

QString Translator::convert(const Typed& from, const Type& to, int style, bool intoColumn) const {
    if (from.type.kind == Type::Null || to.kind == Type::Null || from.type == to) return from.sql;
    const bool isWider =
        to.isInteger() && from.type.isInteger() && from.type.kind <= to.kind && to.kind != Type::Bit;
    const bool isFixed = to.kind == Type::Char || to.kind == Type::NChar;
    const bool textFits =
        from.type.isText() && to.isText() && !isFixed && (to.isUnicode() || !from.type.isUnicode())
        && (to.length == Type::Max || (from.type.length != Type::Max && from.type.length <= to.length));
    const bool isFloat = from.type.isExact() && to.kind == Type::Float;
    if (isWider || textFits || isFloat) return from.sql;
    return QString("ts_convert(%1,%2,%3,%4,%5)")
        .arg(from.sql)
        .arg(from.type.packed())
        .arg(to.packed())
        .arg(style)
        .arg(int(intoColumn));
}

Typed Translator::unary(const Expr& expr) {
    Typed typed = value(expr.args[0]);
    if (expr.text == "+") return typed;
    if (typed.type.isText()) typed = {convert(typed, Type::of(Type::Int)), Type::of(Type::Int)};
    if (typed.type.kind == Type::Bit) typed.type = Type::of(Type::Int);
    if (typed.type.kind == Type::TinyInt) typed.type = Type::of(Type::SmallInt);
    const QString negative = "(-" + typed.sql + ')';
    const bool fits = !typed.type.isInteger() || expr.args[0]->kind == Expr::Number;
    return {fits ? negative : QString("ts_range(%1,%2)").arg(negative).arg(typed.type.packed()), typed.type};
}

Typed Translator::arithmetic(const QString& op, const Typed& a, const Typed& b) const {
    const bool bothTextual =
        (a.type.isText() || a.type.kind == Type::Null) && (b.type.isText() || b.type.kind == Type::Null);
    if (op == "+" && bothTextual && (a.type.isText() || b.type.isText())) {
        Type type = Type::common(a.type, b.type);
        const int limit = type.isUnicode() ? 4000 : 8000;
        if (type.length != Type::Max)
            type = Type::text(std::min(limit, a.type.length + b.type.length), type.isUnicode());
        type.kind = type.isUnicode() ? Type::NVarChar : Type::VarChar;
        return {'(' + a.sql + "||" + b.sql + ')', type};
    }
    if (a.type.isDate() || b.type.isDate()) return dateArithmetic(op, a, b);
    if (bothTextual && (a.type.isText() || b.type.isText()))
        throw serverError(8117, "Operand data type varchar is invalid for the operator %1.", op);

    const Typed left{convert(a, a.type.isText() ? b.type : a.type), a.type.isText() ? b.type : a.type};
    const Typed right{convert(b, b.type.isText() ? a.type : b.type), b.type.isText() ? a.type : b.type};
    const Type type = arithmeticType(op, left.type, right.type);
    if (QString("&|").contains(op)) {
        if (!type.isInteger())
            throw serverError(8117, "Operand data type %1 is invalid for the operator %2.", type.toString(),
                              op);
        return {'(' + left.sql + op + right.sql + ')', type};
    }
    if (op == "/" || op == "%")
        return {QString("%1(%2,%3,%4)")
                    .arg(op == "/" ? "ts_div" : "ts_mod", left.sql, right.sql)
                    .arg(type.packed()),
                type};
    const QString plain = '(' + left.sql + op + right.sql + ')';
    if (type.isInteger()) return {QString("ts_range(%1,%2)").arg(plain).arg(type.packed()), type};
    if (type.isExact()) return {QString("ts_places(%1,%2)").arg(plain).arg(type.scale), type};
    return {plain, type};
}

Typed Translator::dateArithmetic(const QString& op, const Typed& a, const Typed& b) const {
    const bool addsDays =
        (op == "+" || op == "-") && a.type.isDate() && (b.type.isNumber() || b.type.kind == Type::Null);
    if (addsDays && a.type.kind != Type::Date)
        return {QString("ts_days(%1,(%2%3),%4)").arg(a.sql, op == "-" ? "-" : "", b.sql).arg(a.type.packed()),
                a.type};
    if (op == "+" && a.type.isNumber() && b.type.isDate() && b.type.kind != Type::Date)
        return dateArithmetic(op, b, a);
    throw notSupported(QString("%1 %2 %3").arg(a.type.toString(), op, b.type.toString()));
}

Typed Translator::cast(const Expr& expr) {
    int style = 0;
    if (expr.args.size() > 1) {
        const ExprPtr& written = expr.args[1];
        if (written->kind != Expr::Number) throw notSupported("CONVERT with a style that is no number");
        style = written->text.toInt();
    }
    const Typed from = value(expr.args[0]);
    if (from.type == expr.type && !from.isColumn) return from;
    if (style != 0 && from.type.isNumber()) throw notSupported("CONVERT of a number with a style");
    return {convert(from, expr.type, style), expr.type};
}

Typed Translator::caseWhen(const Expr& expr) {
    QStringList branches;
    QList<Typed> values;
    Type type;
    for (std::size_t i = expr.hasOperand ? 1 : 0; i < expr.args.size(); ++i) {
        if (i + 1 == expr.args.size() && expr.hasElse) {
            branches.append(" ELSE ");
        } else {
            const ExprPtr& when = expr.args[i++];
            branches.append(
                " WHEN "
                + (expr.hasOperand ? compare("=", value(expr.args[0]), value(when)) : condition(when))
                + " THEN ");
        }
        values.append(value(expr.args[i]));
        type = Type::common(type, values.last().type);
    }
    QString sql = "CASE";
    for (qsizetype i = 0; i < values.size(); ++i) sql += branches[i] + convert(values[i], type);
    return {sql + " END", type};
}

} // namespace embedded
