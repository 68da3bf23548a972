#pragma once

#include "embedded/QueryParser.h"

namespace embedded {

/// CREATE, ALTER, DROP and the statements about logins, users and roles.
class DdlParser : public QueryParser {
public:
    using QueryParser::QueryParser;

protected:
    StatementPtr parseCreate();
    StatementPtr parseAlter();
    StatementPtr parseDrop();
    StatementPtr parseDeny();
    /// Columns and constraints in brackets.
    TableDef parseTableDef();
    /// Parameters, AS and the body, without CREATE PROCEDURE and the name.
    virtual Batch parseProcedureRest() = 0;

private:
    StatementPtr parseCreateDatabase();
    StatementPtr parseCreateIndex(bool unique);
    StatementPtr parseProcedure(bool alter);
    StatementPtr parseAlterTable();
    StatementPtr parseAlterDatabase();
    StatementPtr parseLogin(SecurityStatement::Action action);
    StatementPtr parseServerRole();
    StatementPtr parseCreateUser();
    void parseTableElement(TableDef& table);
    void parseColumn(TableDef& table);
    bool parseColumnOption(ColumnDef& column, TableDef& table, const QString& constraintName);
    void parseIdentity(ColumnDef& column);
    void parseTableConstraint(TableDef& table, const QString& name);
    void refuseChecks() const;
    void parseKeyOptions();
    void skipFileGroup();
    void skipToEndOfStatement();
};

} // namespace embedded
