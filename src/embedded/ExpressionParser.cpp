#include "embedded/ExpressionParser.h"

#include "embedded/Errors.h"

#include <limits>

namespace embedded {

namespace {

std::shared_ptr<Expr> node(Expr::Kind kind, const QString& text, std::vector<ExprPtr> args = {}) {
    auto expr = std::make_shared<Expr>();
    expr->kind = kind;
    expr->text = text;
    expr->args = std::move(args);
    return expr;
}

ExprPtr number(const QString& text, const Type& type) {
    auto expr = node(Expr::Number, text);
    expr->type = type;
    return expr;
}

ExprPtr textLiteral(const QString& text, bool unicode) {
    auto expr = node(Expr::Text, text);
    expr->type = Type::text(int(std::max<qsizetype>(1, text.size())), unicode);
    return expr;
}

} // namespace

ExprPtr ExpressionParser::parseValue() {
    const Token start = peek();
    ExprPtr expr = parseSum();
    if (expr->isPredicate()) throw DbError(102, QString("Incorrect syntax near '%1'.").arg(start.text));
    return expr;
}

ExprPtr ExpressionParser::parseCondition() {
    ExprPtr expr = parseOr();
    if (!expr->isPredicate())
        throw DbError(4145,
                      QString("An expression of non-boolean type specified in a context where a condition "
                              "is expected, near '%1'.")
                          .arg(peek().text));
    return expr;
}

std::vector<ExprPtr> ExpressionParser::parseValueList() {
    std::vector<ExprPtr> values;
    do values.push_back(parseValue());
    while (accept(","));
    return values;
}

ExprPtr ExpressionParser::parseOr() {
    ExprPtr left = parseAnd();
    while (accept("or")) left = node(Expr::Or, {}, {left, parseAnd()});
    return left;
}

ExprPtr ExpressionParser::parseAnd() {
    ExprPtr left = parseNot();
    while (accept("and")) left = node(Expr::And, {}, {left, parseNot()});
    return left;
}

ExprPtr ExpressionParser::parseNot() {
    if (accept("not")) return node(Expr::Not, {}, {parseNot()});
    return parsePredicate();
}

ExprPtr ExpressionParser::parsePredicate() {
    if (accept("exists")) {
        expect("(");
        auto expr = node(Expr::Exists, {});
        expr->query = parseQuery();
        expect(")");
        return expr;
    }
    ExprPtr left = parseSum();
    return left->isPredicate() ? left : finishPredicate(left);
}

void ExpressionParser::refuseQuantifier() const {
    for (const char* word : {"all", "any", "some"})
        if (is(word)) throw notSupported(peek().text.toUpper() + " in a comparison");
}

ExprPtr ExpressionParser::finishPredicate(ExprPtr left) {
    static const QHash<QString, QString> comparisons{{"=", "="},   {"<>", "<>"}, {"!=", "<>"},
                                                     {"<", "<"},   {">", ">"},   {"<=", "<="},
                                                     {">=", ">="}, {"!<", ">="}, {"!>", "<="}};
    if (peek().kind == Token::Symbol && comparisons.contains(peek().text)) {
        const QString op = comparisons[take().text];
        refuseQuantifier();
        return node(Expr::Compare, op, {left, parseValue()});
    }
    if (accept("is")) {
        auto expr = node(Expr::IsNull, {}, {left});
        expr->flag = accept("not");
        expect("null");
        return expr;
    }
    const bool negated = is("not") && (is("like", 1) || is("in", 1) || is("between", 1));
    if (negated) accept("not");
    std::shared_ptr<Expr> expr;
    if (accept("like")) {
        expr = node(Expr::Like, {}, {left, parseValue()});
        if (accept("escape")) expr->args.push_back(parseValue());
    } else if (accept("in")) {
        return parseIn(left, negated);
    } else if (accept("between")) {
        ExprPtr low = parseValue();
        expect("and");
        expr = node(Expr::Between, {}, {left, low, parseValue()});
    } else {
        return left;
    }
    expr->flag = negated;
    return expr;
}

ExprPtr ExpressionParser::parseIn(ExprPtr left, bool negated) {
    auto expr = node(Expr::In, {}, {left});
    expr->flag = negated;
    expect("(");
    if (is("select")) {
        expr->query = parseQuery();
    } else {
        for (ExprPtr& value : parseValueList()) expr->args.push_back(value);
    }
    expect(")");
    return expr;
}

ExprPtr ExpressionParser::parseSum() {
    ExprPtr left = parseProduct();
    while (is("+") || is("-") || is("&") || is("|") || is("^")) {
        const QString op = take().text;
        left = node(Expr::Binary, op, {left, parseProduct()});
    }
    return left;
}

ExprPtr ExpressionParser::parseProduct() {
    ExprPtr left = parseUnary();
    while (is("*") || is("/") || is("%")) {
        const QString op = take().text;
        left = node(Expr::Binary, op, {left, parseUnary()});
    }
    return left;
}

ExprPtr ExpressionParser::parseUnary() {
    if (is("-") || is("+") || is("~")) {
        const QString op = take().text;
        return node(Expr::Unary, op, {parseUnary()});
    }
    const ExprPtr expr = parsePrimary();
    if (is("collate")) throw notSupported("COLLATE in an expression");
    return expr;
}

ExprPtr ExpressionParser::parsePrimary() {
    const Token& token = peek();
    switch (token.kind) {
    case Token::Variable:
        return node(Expr::Variable, take().text);
    case Token::Symbol:
        if (is("(")) return parseBracket();
        if (is("*")) return take(), node(Expr::Star, {});
        syntaxError();
    case Token::Word:
    case Token::Bracketed:
    case Token::Quoted:
        return parseColumn();
    case Token::End:
        syntaxError();
    default:
        return parseLiteral();
    }
}

ExprPtr ExpressionParser::parseLiteral() {
    const Token token = take();
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
    case Token::Binary: {
        auto expr = node(Expr::Number, "x'" + (text.size() % 2 ? '0' + text : text) + '\'');
        expr->type = Type{Type::Binary, std::max(1, int(text.size() + 1) / 2), 0, 0};
        return expr;
    }
    default:
        return textLiteral(text, token.kind == Token::UnicodeText);
    }
}

ExprPtr ExpressionParser::parseBracket() {
    expect("(");
    ExprPtr expr;
    if (is("select")) {
        auto query = node(Expr::Subquery, {});
        query->query = parseQuery();
        expr = query;
    } else {
        expr = parseOr();
    }
    expect(")");
    return expr;
}

ExprPtr ExpressionParser::parseCase() {
    auto expr = node(Expr::Case, {});
    expr->hasOperand = !is("when");
    if (expr->hasOperand) expr->args.push_back(parseValue());
    while (accept("when")) {
        expr->args.push_back(expr->hasOperand ? parseValue() : parseCondition());
        expect("then");
        expr->args.push_back(parseValue());
    }
    expr->hasElse = accept("else");
    if (expr->hasElse) expr->args.push_back(parseValue());
    expect("end");
    return expr;
}

ExprPtr ExpressionParser::parseCast(bool convert) {
    auto expr = node(Expr::Cast, {});
    const auto castType = [this] {
        Type type = takeType();
        // Without a length a text gets 30 here, but 1 in a declaration.
        if ((type.isText() || type.kind == Type::Binary) && type.length == 1 && !is(")", -1))
            type.length = 30;
        return type;
    };
    expect("(");
    if (convert) {
        expr->type = castType();
        expect(",");
        expr->args.push_back(parseValue());
        if (accept(",")) expr->args.push_back(parseValue());
    } else {
        expr->args.push_back(parseValue());
        expect("as");
        expr->type = castType();
    }
    expect(")");
    return expr;
}

ExprPtr ExpressionParser::parseCall(const QString& name) {
    auto expr = node(Expr::Call, name.toLower());
    expect("(");
    if (!is(")")) {
        expr->flag = accept("distinct");
        if (!expr->flag) accept("all");
        expr->args = parseValueList();
    }
    expect(")");
    if (is("over")) throw notSupported("OVER");
    return expr;
}

/// A column, a function call, or one of the words that look like a column.
ExprPtr ExpressionParser::parseColumn() {
    if (peek().kind == Token::Quoted && !quotedIdentifiers()) return textLiteral(take().text, false);
    if (accept("null")) return node(Expr::Null, {});
    if (accept("case")) return parseCase();
    if (is("cast") && is("(", 1)) return take(), parseCast(false);
    if (is("convert") && is("(", 1)) return take(), parseCast(true);
    if (accept("current_timestamp")) return node(Expr::Call, "getdate");
    if (accept("system_user")) return node(Expr::Call, "suser_sname");
    for (const char* word : {"left", "right", "coalesce", "nullif"})
        if (is(word) && is("(", 1)) return parseCall(take().text);
    if (peek().kind == Token::Word && is("(", 1) && !isReserved(peek().text)) return parseCall(take().text);

    QStringList parts{takeName()};
    while (accept(".")) {
        if (is(".")) {
            parts.append(QString());
        } else if (accept("*")) {
            auto star = node(Expr::Star, {});
            star->parts = parts;
            return star;
        } else if (is("(", 1)) {
            throw notSupported("function " + parts.join(u'.') + '.' + peek().text);
        } else {
            parts.append(takeName());
        }
    }
    auto expr = node(Expr::Column, {});
    expr->parts = parts;
    return expr;
}

} // namespace embedded
