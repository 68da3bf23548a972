#pragma once

#include "embedded/TokenReader.h"

namespace embedded {

/// Expressions and search conditions.
class ExpressionParser : public TokenReader {
public:
    using TokenReader::TokenReader;
    virtual ~ExpressionParser() = default;

protected:
    ExprPtr parseValue();     ///< a value; a predicate in its place is a syntax error
    ExprPtr parseCondition(); ///< a predicate; a value in its place is a syntax error (4145)
    std::vector<ExprPtr> parseValueList();
    virtual QueryPtr parseQuery() = 0;

private:
    ExprPtr parseOr();
    ExprPtr parseAnd();
    ExprPtr parseNot();
    ExprPtr parsePredicate();
    ExprPtr parseSum();
    ExprPtr parseProduct();
    ExprPtr parseUnary();
    ExprPtr parsePrimary();
    ExprPtr parseLiteral();
    ExprPtr parseBracket();
    ExprPtr parseCase();
    ExprPtr parseCast(bool convert);
    ExprPtr parseCall(const QString& name);
    ExprPtr parseColumn();
    ExprPtr finishPredicate(ExprPtr left);
    ExprPtr parseIn(ExprPtr left, bool negated);
    void refuseQuantifier() const;
};

} // namespace embedded
