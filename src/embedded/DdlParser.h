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
    StatementPtr parsePermission(); ///< DENY, GRANT and REVOKE CONNECT
    /// Columns and constraints in brackets.
    TableDef parseTableDef();
    /// Parameters, AS and the body, without CREATE PROCEDURE and the name.
    virtual Batch parseProcedureRest() = 0;

private:
    StatementPtr parseCreateDatabase();
    StatementPtr parseCreateIndex(bool unique);
    StatementPtr parseProcedure(bool alter);
    StatementPtr parseView(bool alter);
    StatementPtr parseAlterTable();
    StatementPtr parseAlterDatabase();
    StatementPtr parseLogin(SecurityStatement::Action action);
    StatementPtr parseServerRole();
    StatementPtr parseUser(SecurityStatement::Action action);
    void parseTableElement(TableDef& table);
    void parseColumn(TableDef& table);
    bool parseColumnOption(ColumnDef& column, TableDef& table, const QString& constraintName);
    void parseIdentity(ColumnDef& column);
    void parseTableConstraint(TableDef& table, const QString& name);
    void parseReferences(ConstraintDef& constraint);
    QString parseCheck();
    void parseKeyOptions();
    void skipFileGroup();
    void skipToEndOfStatement();
};

} // namespace embedded
