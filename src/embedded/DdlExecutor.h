#pragma once

#include "embedded/Security.h"
#include "embedded/Translator.h"

namespace embedded {

/// The statements that change the catalogue: databases, tables, constraints, indexes, procedures, logins.
/// The caller puts a savepoint around each.
class DdlExecutor {
public:
    DdlExecutor(Session& session, const FunctionTable& functions)
        : m_session(session), m_functions(functions) {}

    void run(const CreateDatabaseStatement& statement);
    void run(const AlterDatabaseStatement& statement);
    void run(const CreateTableStatement& statement);
    void run(const AlterTableStatement& statement);
    void run(const TruncateStatement& statement);
    void run(const DropStatement& statement);
    void run(const DropDatabaseStatement& statement);
    void run(const CreateIndexStatement& statement);
    void run(const CreateProcedureStatement& statement);
    void run(const IdentityInsertStatement& statement);
    void run(const SecurityStatement& statement) { security::run(m_session, statement); }
    /// A #table or table variable in the innermost frame.
    void createTemporary(const QString& name, const TableDef& definition);

private:
    Translator translator() const { return {m_session, m_functions}; }
    /// A copy, since the catalogue reads itself anew at each change.
    Object tableNamed(const ObjectName& name) const;
    const Database& databaseFor(const ObjectName& name) const;
    /// Makes the table in SQLite.
    void createStorage(const Object& table, const TableDef& definition);
    void addColumns(const Object& table, const TableDef& definition);
    void alterColumn(const Object& table, const Column& definition);
    void dropColumn(const Object& table, const QString& name);
    void dropConstraint(const Object& table, const QString& name);
    void drop(Object object);
    void dropDatabase(const QString& name, bool ifExists);
    void dropIndex(const ObjectName& name, bool ifExists);

    Session& m_session;
    const FunctionTable& m_functions;
};

} // namespace embedded
