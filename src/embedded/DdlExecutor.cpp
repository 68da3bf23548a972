#include "embedded/DdlExecutor.h"

#include "embedded/Collation.h"
#include "embedded/ConstraintBuilder.h"
#include "embedded/Errors.h"

namespace embedded {

namespace {

DbError cannotDrop(const QString& kind, const QString& name) {
    return serverError(3701, "Cannot drop the %1 '%2', because it does not exist.", kind, name);
}

DbError duplicateColumn(const QString& name, const QString& table) {
    return serverError(2705, "Column name '%1' in table '%2' is specified more than once.", name, table);
}

bool isTemporary(const ObjectName& name) {
    return name.name.startsWith(u'#');
}

} // namespace

const Database& DdlExecutor::databaseFor(const ObjectName& name) const {
    if (!name.schema.isEmpty() && !collation::equal(name.schema, "dbo"))
        throw serverError(2760, "The specified schema name \"%1\" does not exist.", name.schema);
    return m_session.databaseNamed(name.database);
}

Object DdlExecutor::tableNamed(const ObjectName& name) const {
    const Object* table = m_session.find(name);
    if (!table || table->kind != ObjectKind::Table)
        throw serverError(4902, "Cannot find the object \"%1\".", name.toString());
    return *table;
}

void DdlExecutor::run(const CreateDatabaseStatement& statement) {
    if (!m_session.isInRole("dbcreator"))
        throw DbError(262, "CREATE DATABASE permission denied in database 'master'.");
    if (m_session.transactionDepth > 0)
        throw DbError(226, "CREATE DATABASE statement not allowed within multi-statement transaction.");
    if (m_session.catalog.database(statement.name))
        throw serverError(1801, "Database '%1' already exists. Choose a different database name.",
                          statement.name);
    m_session.catalog.setAccess(m_session.catalog.addDatabase(statement.name), m_session.login, true);
}

void DdlExecutor::run(const AlterDatabaseStatement& statement) {
    m_session.databaseNamed(statement.name);
}

void DdlExecutor::createStorage(const Object& table, const TableDef& definition) {
    QStringList columns;
    for (const Column& column : definition.columns) columns.append(declaration(column));
    m_session.file.run("CREATE TABLE " + table.sqlName() + '(' + columns.join(u',') + ')');
    for (const Column& column : definition.columns) {
        if (!column.identity || column.seed == 1) continue;
        if (!column.type.isInteger()) throw notSupported("IDENTITY of type " + column.type.toString());
        m_session.file.run("INSERT INTO " + table.schema() + "sqlite_sequence VALUES (?1, ?2)",
                           {table.storage, column.seed - 1});
    }
}

void DdlExecutor::run(const CreateTableStatement& statement) {
    if (isTemporary(statement.table)) return createTemporary(statement.table.name, statement.definition);
    const Database database = databaseFor(statement.table);
    if (m_session.catalog.object(database.id, statement.table.name))
        throw alreadyExists(statement.table.name);
    const TableDef& definition = statement.definition;
    QSet<QString> names;
    for (const Column& column : definition.columns) {
        if (names.contains(collation::fold(column.name)))
            throw duplicateColumn(column.name, statement.table.name);
        names.insert(collation::fold(column.name));
    }
    const qint64 id =
        m_session.catalog.addObject(database.id, ObjectKind::Table, statement.table.name, 0, {});
    createStorage(*m_session.catalog.object(id), definition);
    for (Column column : definition.columns) {
        for (const ConstraintDef& constraint : definition.constraints)
            if (constraint.kind == ObjectKind::PrimaryKey
                && constraint.columns.contains(column.name, Qt::CaseInsensitive))
                column.nullable = false;
        m_session.catalog.addColumn(id, column);
    }
    for (const ConstraintDef& constraint : definition.constraints)
        ConstraintBuilder(m_session, *m_session.catalog.object(id)).add(constraint);
}

void DdlExecutor::createTemporary(const QString& name, const TableDef& definition) {
    Frame& frame = m_session.frames.back();
    if (frame.tables.count(collation::fold(name))) throw alreadyExists(name);
    Object table;
    table.name = name;
    table.storage = name + '~' + QString::number(++m_session.nextStorage);
    createStorage(table, definition);
    table.columns = {definition.columns.begin(), definition.columns.end()};
    int number = 0;
    for (const ConstraintDef& constraint : definition.constraints)
        ConstraintBuilder(m_session, table).addTemporaryKey(constraint, ++number);
    frame.tables[collation::fold(name)] = table;
}

void DdlExecutor::run(const AlterTableStatement& statement) {
    const Object table = tableNamed(statement.table);
    if (table.isTemporary()) throw notSupported("ALTER TABLE of a temporary table");
    switch (statement.action) {
    case AlterTableStatement::Add:
        addColumns(table, statement.added);
        break;
    case AlterTableStatement::AlterColumn:
        alterColumn(table, statement.added.columns.front());
        break;
    case AlterTableStatement::DropColumns:
        for (const QString& name : statement.names) dropColumn(*m_session.catalog.object(table.id), name);
        break;
    case AlterTableStatement::DropConstraints:
        for (const QString& name : statement.names) dropConstraint(table, name);
        break;
    }
}

void DdlExecutor::addColumns(const Object& table, const TableDef& definition) {
    for (const Column& column : definition.columns) {
        if (m_session.catalog.object(table.id)->column(column.name))
            throw duplicateColumn(column.name, table.name);
        if (column.identity) throw notSupported("adding an IDENTITY column to a table");
        const bool hasRows = !isNull(m_session.file.scalar("SELECT 1 FROM " + table.sqlName() + " LIMIT 1"));
        if (!column.nullable && column.defaultText.isEmpty() && hasRows)
            throw serverError(
                4901, "Column '%1' cannot be added to the table '%2', which has rows, without a default.",
                column.name, table.name);
        m_session.file.run("ALTER TABLE " + table.sqlName() + " ADD COLUMN " + declaration(column));
        m_session.catalog.addColumn(table.id, column);
        // Rows that are there take the default only where NULL is no way out.
        if (!column.nullable && hasRows)
            m_session.file.run(translator().fill(*m_session.catalog.object(table.id), column, {}, {}));
    }
    for (const ConstraintDef& constraint : definition.constraints)
        ConstraintBuilder(m_session, *m_session.catalog.object(table.id)).add(constraint);
}

void DdlExecutor::alterColumn(const Object& table, const Column& definition) {
    const Column* former = table.column(definition.name);
    if (!former)
        throw serverError(4924, "Column '%1' does not exist in table '%2'.", definition.name, table.name);
    if (former->identity) throw notSupported("altering an IDENTITY column");
    Column column = definition;
    column.name = former->name;
    column.defaultText = former->defaultText;
    m_session.file.redeclare({{table.storage, declaration(*former), declaration(column)}});
    m_session.file.run(translator().fill(table, column, sqliteName(column.name), former->type));
    m_session.catalog.changeColumn(table.id, column);
}

void DdlExecutor::dropColumn(const Object& table, const QString& name) {
    const Column* column = table.column(name);
    if (!column) throw cannotDrop("column", name);
    for (const Object* part : m_session.catalog.partsOf(table.id))
        if (part->keyColumns().contains(column->name, Qt::CaseInsensitive))
            throw serverError(5074, "The object '%1' is dependent on column '%2'.", part->name, name);
    if (column->identity) throw notSupported("dropping an IDENTITY column");
    const QString known = column->name;
    m_session.file.run("ALTER TABLE " + table.sqlName() + " DROP COLUMN " + sqliteName(known));
    m_session.catalog.removeColumn(table.id, known);
}

void DdlExecutor::dropConstraint(const Object& table, const QString& name) {
    for (const Object* part : m_session.catalog.partsOf(table.id)) {
        if (part->kind == ObjectKind::Index || !collation::equal(part->name, name)) continue;
        if (part->kind == ObjectKind::Default) {
            Column column = *table.column(part->text);
            column.defaultText.clear();
            m_session.catalog.changeColumn(table.id, column);
        }
        return drop(*part);
    }
    throw serverError(3728, "'%1' is not a constraint.", name);
}

void DdlExecutor::run(const TruncateStatement& statement) {
    const Object table = tableNamed(statement.table);
    m_session.file.run("DELETE FROM " + table.sqlName());
    if (table.identityColumn())
        m_session.file.run("DELETE FROM " + table.schema() + "sqlite_sequence WHERE name = ?1",
                           {table.storage});
}

void DdlExecutor::run(const CreateIndexStatement& statement) {
    const Object table = tableNamed(statement.table);
    if (table.isTemporary()) throw notSupported("an index on a temporary table");
    ConstraintBuilder(m_session, table).addIndex(statement.name, statement.columns, statement.unique);
}

void DdlExecutor::run(const CreateProcedureStatement& statement) {
    const ObjectName& name = statement.name;
    if (!name.database.isEmpty())
        throw DbError(166, "The name of a procedure to be created takes no database.");
    const Database database = databaseFor(name);
    const Object* existing = m_session.catalog.object(database.id, name.name);
    if (statement.alter && (!existing || existing->kind != ObjectKind::Procedure))
        throw invalidObject(name.toString());
    if (!statement.alter && existing) throw alreadyExists(name.name);
    if (statement.alter)
        m_session.catalog.setText(existing->id, statement.text);
    else
        m_session.catalog.addObject(database.id, ObjectKind::Procedure, name.name, 0, statement.text);
}

void DdlExecutor::run(const IdentityInsertStatement& statement) {
    const Object table = tableNamed(statement.table);
    if (!table.identityColumn())
        throw serverError(8106, "Table '%1' does not have the identity property.", table.name);
    if (statement.on && !m_session.identityInsert.isEmpty() && m_session.identityInsert != table.sqlName())
        throw DbError(8107, "IDENTITY_INSERT is already ON for another table.");
    m_session.identityInsert = statement.on ? table.sqlName() : QString();
}

void DdlExecutor::run(const DropStatement& statement) {
    for (const ObjectName& name : statement.names) {
        if (statement.kind == ObjectKind::Index) {
            dropIndex(name, statement.ifExists);
            continue;
        }
        const Object* object = m_session.find(name);
        if (object && object->kind == statement.kind)
            drop(*object);
        else if (!statement.ifExists)
            throw cannotDrop(statement.kind == ObjectKind::Table ? "table" : "procedure", name.name);
    }
}

void DdlExecutor::drop(Object object) {
    if (object.kind == ObjectKind::Table) m_session.file.run("DROP TABLE " + object.sqlName());
    if (object.isTemporary()) {
        for (Frame& frame : m_session.frames) frame.tables.erase(collation::fold(object.name));
        return;
    }
    ConstraintBuilder::remove(m_session, object);
    for (const Object* part : m_session.catalog.partsOf(object.id))
        ConstraintBuilder::remove(m_session, *part);
    m_session.catalog.removeObject(object.id);
}

void DdlExecutor::run(const DropDatabaseStatement& statement) {
    for (const QString& name : statement.names) dropDatabase(name, statement.ifExists);
}

void DdlExecutor::dropDatabase(const QString& name, bool ifExists) {
    const Database* found = m_session.catalog.database(name);
    if (!found && ifExists) return;
    if (!found || !m_session.isInRole("dbcreator")) throw cannotDrop("database", name);
    const Database database = *found;
    if (database.id <= 4)
        throw serverError(3708, "Cannot drop the database '%1' because it is a system database.", name);
    if (m_session.isInUse(database.id))
        throw serverError(3702, "Cannot drop database \"%1\" because it is currently in use.", name);
    for (const Object* object : m_session.catalog.objectsIn(database.id))
        if (object->kind == ObjectKind::Table) m_session.file.run("DROP TABLE " + object->sqlName());
    m_session.catalog.removeDatabase(database.id);
}

/// DROP INDEX table.index
void DdlExecutor::dropIndex(const ObjectName& name, bool ifExists) {
    for (const Object* part : m_session.catalog.partsOf(tableNamed({{}, name.database, name.schema}).id))
        if (part->kind == ObjectKind::Index && collation::equal(part->name, name.name)) return drop(*part);
    if (!ifExists) throw cannotDrop("index", name.name);
}

} // namespace embedded
