#pragma once

#include "embedded/TokenReader.h"

/// The rules of the grammar that other rules lean on. Each reads its own from the tokens and stops there.
namespace embedded {

template <class T>
StatementPtr statement(T what) {
    return std::make_shared<Statement>(Statement{std::move(what)});
}

std::shared_ptr<Expr> makeExpr(Expr::Kind kind, const QString& text = {}, std::vector<ExprPtr> args = {});
ExprPtr makeText(const QString& text, bool unicode);

ExprPtr parseValue(TokenReader& in);     ///< a value; a predicate in its place is a syntax error
ExprPtr parseCondition(TokenReader& in); ///< a predicate; a value in its place is a syntax error (4145)
std::vector<ExprPtr> parseValueList(TokenReader& in);
/// "= value", or "+= value" and its like, which come out as target + value.
ExprPtr parseAssigned(TokenReader& in, const ExprPtr& target);

QueryPtr parseQuery(TokenReader& in);

// Statements, behind the word that each begins with
StatementPtr parseInsert(TokenReader& in);
StatementPtr parseUpdate(TokenReader& in);
StatementPtr parseDelete(TokenReader& in);

StatementPtr parseCreate(TokenReader& in);
StatementPtr parseAlter(TokenReader& in);
StatementPtr parseDrop(TokenReader& in);
StatementPtr parseDeny(TokenReader& in);
TableDef parseTableDef(TokenReader& in); ///< columns and constraints in brackets

StatementPtr parseStatement(TokenReader& in);
/// Parameters, AS and the body, without CREATE PROCEDURE and the name.
Batch parseProcedureRest(TokenReader& in);

} // namespace embedded
