#pragma once

#include "embedded/Ast.h"

/// Texts of the dialect as trees. All throw DbError for a text that is none of that kind, and notSupported
/// for what this server does not know.
namespace embedded {

/// A whole batch: control flow, variables, cursors, transactions and calls.
Batch parseBatch(const QString& text, bool quotedIdentifiers);
/// The text that CREATE PROCEDURE stored, as its parameters and body.
Batch parseProcedure(const QString& text);
/// The parameters of sp_executesql: "@a int, @b varchar(10) OUTPUT".
std::vector<Parameter> parseParameterList(const QString& text);
/// A stored default.
ExprPtr parseDefault(const QString& text);
/// The argument of object_id.
ObjectName parseObjectName(const QString& text);

} // namespace embedded
