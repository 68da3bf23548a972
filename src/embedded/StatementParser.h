#pragma once

#include "embedded/DdlParser.h"

namespace embedded {

/// A whole batch: control flow, variables, cursors, transactions and calls. Throws DbError for a text
/// that is no batch, and notSupported for statements this server does not know.
class StatementParser : public DdlParser {
public:
    using DdlParser::DdlParser;

    Batch parseBatch();
    /// The text that CREATE PROCEDURE stored, as its parameters and body.
    Batch parseProcedureText();
    /// The parameters of sp_executesql: "@a int, @b varchar(10) OUTPUT".
    std::vector<Parameter> parseParameterList();
    /// A stored default.
    ExprPtr parseValueText();

protected:
    Batch parseProcedureRest() override;

private:
    StatementPtr parseStatement();
    StatementPtr parseBody(); ///< the statement that IF, ELSE or WHILE governs
    StatementList parseUntilEnd();
    StatementPtr parseBegin();
    StatementPtr parseTry();
    StatementPtr parseDeclare();
    StatementPtr parseDeclareCursor();
    void skipCursorOptions();
    VariableDef parseVariable();
    StatementPtr parseSet();
    StatementPtr parseIf();
    StatementPtr parseReturn();
    ExecuteStatement parseExecute();
    StatementPtr parseCursor();
    StatementPtr parseFetch();
    StatementPtr parseTransaction();
    QString takeCursorName();
    std::vector<Argument> parseArguments();
    ExprPtr parseArgumentValue();
    bool startsStatement() const;
    StatementPtr parseCall();

    std::vector<VariableDef> m_variables;
    bool m_first = true;
};

} // namespace embedded
