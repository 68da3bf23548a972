#include "embedded/Errors.h"
#include "embedded/Grammar.h"

#include <QHash>
#include <limits>

namespace embedded {

namespace {

ExprPtr parseOr(TokenReader& in);

ExprPtr number(const QString& text, const Type& type) {
    auto expr = makeExpr(Expr::Number, text);
    expr->type = type;
    return expr;
}

ExprPtr parseLiteral(TokenReader& in) {
    const Token token = in.take();
    const QString& text = token.text;
    switch (token.kind) {
    case Token::Integer: {
        bool fits = false;
        const qint64 value = text.toLongLong(&fits);
        if (!fits) throw notSupported("a number with more than 18 digits: " + text);
        if (value <= std::numeric_limits<qint32>::max()) {
            Type type = Type::of(Type::Int);
            type.precision = int(text.size()); // counts when it meets a decimal
            return number(text, type);
        }
        return number(text, Type::decimal(int(text.size()), 0));
    }
    case Token::Decimal: {
        const int scale = int(text.size() - text.indexOf(u'.') - 1);
        return number(text, Type::decimal(std::max(1, int(text.size()) - 1), scale));
    }
    case Token::Float:
        return number(text, Type::of(Type::Float));
    case Token::Money:
        return number(text, Type::of(Type::Money));
    default:
        return makeText(text, token.kind == Token::UnicodeText);
    }
}

ExprPtr parseBracket(TokenReader& in) {
    const Level level(in.expressionLevels);
    in.expect("(");
    ExprPtr expr;
    if (in.is("select")) {
        auto query = makeExpr(Expr::Subquery);
        query->query = parseQuery(in);
        expr = query;
    } else {
        expr = parseOr(in);
    }
    in.expect(")");
    return expr;
}

ExprPtr parseCase(TokenReader& in) {
    auto expr = makeExpr(Expr::Case);
    expr->hasOperand = !in.is("when");
    if (expr->hasOperand) expr->args.push_back(parseValue(in));
    while (in.accept("when")) {
        expr->args.push_back(expr->hasOperand ? parseValue(in) : parseCondition(in));
        in.expect("then");
        expr->args.push_back(parseValue(in));
    }
    expr->hasElse = in.accept("else");
    if (expr->hasElse) expr->args.push_back(parseValue(in));
    in.expect("end");
    return expr;
}

ExprPtr parseCast(TokenReader& in, bool convert) {
    auto expr = makeExpr(Expr::Cast);
    const auto castType = [&in] {
        Type type = in.takeType();
        // Without a length a text gets 30 here, but 1 in a declaration.
        if ((type.isText() || type.kind == Type::Binary) && type.length == 1 && !in.is(")", -1))
            type.length = 30;
        return type;
    };
    in.expect("(");
    if (convert) {
        expr->type = castType();
        in.expect(",");
        expr->args.push_back(parseValue(in));
        if (in.accept(",")) expr->args.push_back(parseValue(in));
    } else {
        expr->args.push_back(parseValue(in));
        in.expect("as");
        expr->type = castType();
    }
    in.expect(")");
    return expr;
}

ExprPtr parseCall(TokenReader& in, const QString& name) {
    auto expr = makeExpr(Expr::Call, name.toLower());
    in.expect("(");
    if (!in.is(")")) {
        expr->flag = in.accept("distinct");
        if (!expr->flag) in.accept("all");
        expr->args = parseValueList(in);
    }
    in.expect(")");
    in.refuse({"over"});
    return expr;
}

/// A column, a function call, or one of the words that look like a column.
ExprPtr parseColumn(TokenReader& in) {
    if (in.peek().kind == Token::Quoted && !in.quotedIdentifiers()) return makeText(in.take().text, false);
    if (in.accept("null")) return makeExpr(Expr::Null);
    if (in.accept("case")) return parseCase(in);
    if (in.is("cast") && in.is("(", 1)) return in.take(), parseCast(in, false);
    if (in.is("convert") && in.is("(", 1)) return in.take(), parseCast(in, true);
    if (in.accept("current_timestamp")) return makeExpr(Expr::Call, "getdate");
    if (in.accept("system_user")) return makeExpr(Expr::Call, "suser_sname");
    for (const char* word : {"left", "right", "coalesce", "nullif"})
        if (in.is(word) && in.is("(", 1)) return parseCall(in, in.take().text);
    if (in.peek().kind == Token::Word && in.is("(", 1) && !in.isReserved(in.peek().text))
        return parseCall(in, in.take().text);

    QStringList parts{in.takeName()};
    while (in.accept(".")) {
        if (in.is(".")) {
            parts.append(QString());
        } else if (in.accept("*")) {
            auto star = makeExpr(Expr::Star);
            star->parts = parts;
            return star;
        } else if (in.is("(", 1)) {
            throw notSupported("function " + parts.join(u'.') + '.' + in.peek().text);
        } else {
            parts.append(in.takeName());
        }
    }
    auto expr = makeExpr(Expr::Column);
    expr->parts = parts;
    return expr;
}

ExprPtr parsePrimary(TokenReader& in) {
    const Token& token = in.peek();
    switch (token.kind) {
    case Token::Variable:
        return makeExpr(Expr::Variable, in.take().text);
    case Token::Symbol:
        if (in.is("(")) return parseBracket(in);
        if (in.is("*")) return in.take(), makeExpr(Expr::Star);
        in.syntaxError();
    case Token::Word:
    case Token::Bracketed:
    case Token::Quoted:
        return parseColumn(in);
    case Token::End:
        in.syntaxError();
    default:
        return parseLiteral(in);
    }
}

ExprPtr parseUnary(TokenReader& in) {
    const Level level(in.expressionLevels);
    in.refuse({"~"}, "operator ");
    if (in.is("-") || in.is("+")) {
        const QString op = in.take().text;
        return makeExpr(Expr::Unary, op, {parseUnary(in)});
    }
    const ExprPtr expr = parsePrimary(in);
    in.refuse({"collate"}, "an expression with ");
    return expr;
}

/// Operands with operators of one rank between them, which join from the left.
ExprPtr parseChain(TokenReader& in, Expr::Kind kind, std::initializer_list<const char*> operators,
                   ExprPtr (*parseOperand)(TokenReader&)) {
    ExprPtr left = parseOperand(in);
    const auto isOperator = [&in](const char* op) { return in.is(op); };
    while (std::any_of(operators.begin(), operators.end(), isOperator)) {
        if (++in.operators > 1000) throw nestedTooDeeply();
        const QString op = in.take().text;
        left = makeExpr(kind, op, {left, parseOperand(in)});
    }
    return left;
}

ExprPtr parseProduct(TokenReader& in) {
    return parseChain(in, Expr::Binary, {"*", "/", "%"}, parseUnary);
}

ExprPtr parseSum(TokenReader& in) {
    ExprPtr sum = parseChain(in, Expr::Binary, {"+", "-", "&", "|"}, parseProduct);
    in.refuse({"^"}, "operator ");
    return sum;
}

ExprPtr parseIn(TokenReader& in, const ExprPtr& left, bool negated) {
    auto expr = makeExpr(Expr::In, {}, {left});
    expr->flag = negated;
    in.expect("(");
    if (in.is("select")) {
        expr->query = parseQuery(in);
    } else {
        for (ExprPtr& value : parseValueList(in)) expr->args.push_back(value);
    }
    in.expect(")");
    return expr;
}

ExprPtr finishPredicate(TokenReader& in, const ExprPtr& left) {
    static const QHash<QString, QString> comparisons{{"=", "="},   {"<>", "<>"}, {"!=", "<>"},
                                                     {"<", "<"},   {">", ">"},   {"<=", "<="},
                                                     {">=", ">="}, {"!<", ">="}, {"!>", "<="}};
    if (in.peek().kind == Token::Symbol && comparisons.contains(in.peek().text)) {
        const QString op = comparisons[in.take().text];
        in.refuse({"all", "any", "some"}, "a comparison with ");
        return makeExpr(Expr::Compare, op, {left, parseValue(in)});
    }
    if (in.accept("is")) {
        auto expr = makeExpr(Expr::IsNull, {}, {left});
        expr->flag = in.accept("not");
        in.expect("null");
        return expr;
    }
    const bool negated = in.is("not") && (in.is("like", 1) || in.is("in", 1) || in.is("between", 1));
    if (negated) in.accept("not");
    std::shared_ptr<Expr> expr;
    if (in.accept("like")) {
        expr = makeExpr(Expr::Like, {}, {left, parseValue(in)});
        if (in.accept("escape")) expr->args.push_back(parseValue(in));
    } else if (in.accept("in")) {
        return parseIn(in, left, negated);
    } else if (in.accept("between")) {
        ExprPtr low = parseValue(in);
        in.expect("and");
        expr = makeExpr(Expr::Between, {}, {left, low, parseValue(in)});
    } else {
        return left;
    }
    expr->flag = negated;
    return expr;
}

ExprPtr parsePredicate(TokenReader& in) {
    if (in.accept("exists")) {
        in.expect("(");
        auto expr = makeExpr(Expr::Exists);
        expr->query = parseQuery(in);
        in.expect(")");
        return expr;
    }
    ExprPtr left = parseSum(in);
    return left->isPredicate() ? left : finishPredicate(in, left);
}

ExprPtr parseNot(TokenReader& in) {
    const Level level(in.expressionLevels);
    if (in.accept("not")) return makeExpr(Expr::Not, {}, {parseNot(in)});
    return parsePredicate(in);
}

ExprPtr parseAnd(TokenReader& in) {
    return parseChain(in, Expr::And, {"and"}, parseNot);
}

ExprPtr parseOr(TokenReader& in) {
    return parseChain(in, Expr::Or, {"or"}, parseAnd);
}

} // namespace

std::shared_ptr<Expr> makeExpr(Expr::Kind kind, const QString& text, std::vector<ExprPtr> args) {
    auto expr = std::make_shared<Expr>();
    expr->kind = kind;
    expr->text = text;
    expr->args = std::move(args);
    return expr;
}

ExprPtr makeText(const QString& text, bool unicode) {
    auto expr = makeExpr(Expr::Text, text);
    expr->type = Type::text(int(std::max<qsizetype>(1, text.size())), unicode);
    return expr;
}

ExprPtr parseAssigned(TokenReader& in, const ExprPtr& target) {
    for (const char* op : {"+=", "-=", "*=", "/="})
        if (in.accept(op)) return makeExpr(Expr::Binary, QString(op).left(1), {target, parseValue(in)});
    in.expect("=");
    return parseValue(in);
}

ExprPtr parseValue(TokenReader& in) {
    if (in.expressionLevels == 0) in.operators = 0;
    const Level level(in.expressionLevels);
    const Token start = in.peek();
    ExprPtr expr = parseSum(in);
    if (expr->isPredicate()) throw serverError(102, "Incorrect syntax near '%1'.", start.text);
    return expr;
}

ExprPtr parseCondition(TokenReader& in) {
    if (in.expressionLevels == 0) in.operators = 0;
    const Level level(in.expressionLevels);
    ExprPtr expr = parseOr(in);
    if (!expr->isPredicate()) throw serverError(4145, "A condition is expected near '%1'.", in.peek().text);
    return expr;
}

std::vector<ExprPtr> parseValueList(TokenReader& in) {
    std::vector<ExprPtr> values;
    do values.push_back(parseValue(in));
    while (in.accept(","));
    return values;
}

} // namespace embedded
