#include "embedded/ConstraintBuilder.h"

#include "embedded/Errors.h"

namespace embedded {

namespace {

QStringList quoted(const QStringList& names) {
    QStringList result;
    for (const QString& name : names) result.append(sqliteName(name));
    return result;
}

/// The key that SQLite means by "table.column, table.column" or "index 'name'"; null when there is none.
const Object* keyNamed(const Session& session, const QString& columns) {
    for (const Database& database : session.catalog.databases())
        for (const Object* key : session.catalog.objectsIn(database.id)) {
            if (key->kind != ObjectKind::PrimaryKey && key->kind != ObjectKind::Unique
                && key->kind != ObjectKind::Index)
                continue;
            const Object* table = session.catalog.object(key->parent);
            if (!table) continue;
            QStringList names;
            for (const QString& column : key->keyColumns()) names.append(table->storage + '.' + column);
            if (names.join(", ") == columns || columns.startsWith(QString("index 'ix%1_").arg(key->id)))
                return key;
        }
    return nullptr;
}

} // namespace

QStringList ConstraintBuilder::knownColumns(const QStringList& names) const {
    QStringList known;
    for (const QString& name : names) {
        const Column* column = m_table.column(name);
        if (!column) throw serverError(1911, "Column name '%1' does not exist in the target table.", name);
        known.append(column->name);
    }
    return known;
}

QString ConstraintBuilder::freeName(const ConstraintDef& constraint) const {
    if (!constraint.name.isEmpty()) {
        if (m_session.catalog.object(m_table.database, constraint.name)) throw alreadyExists(constraint.name);
        return constraint.name;
    }
    const QString prefix = constraint.kind == ObjectKind::PrimaryKey ? "PK"
                           : constraint.kind == ObjectKind::Unique   ? "UQ"
                                                                     : "DF";
    const QString stem = prefix + "__" + m_table.name;
    for (int number = 1;; ++number) {
        const QString name = stem + "__" + QString::number(number).rightJustified(4, u'0');
        if (!m_session.catalog.object(m_table.database, name)) return name;
    }
}

void ConstraintBuilder::add(const ConstraintDef& constraint) {
    const QString name = freeName(constraint);
    const QStringList columns = knownColumns(constraint.columns);
    const ObjectKind kind = constraint.kind;
    if (kind == ObjectKind::PrimaryKey)
        for (const Object* part : m_session.catalog.partsOf(m_table.id))
            if (part->kind == ObjectKind::PrimaryKey)
                throw serverError(1779, "Table '%1' already has a primary key defined on it.", m_table.name);
    const qint64 id =
        m_session.catalog.addObject(m_table.database, kind, name, m_table.id, columns.join(u'\n'));
    if (kind == ObjectKind::Default)
        setDefault(columns.first(), constraint.text);
    else
        addUnique(id, columns, kind);
}

void ConstraintBuilder::addIndex(const QString& name, const QStringList& columns, bool unique) {
    const QStringList known = knownColumns(columns);
    for (const Object* part : m_session.catalog.partsOf(m_table.id))
        if (part->kind == ObjectKind::Index && part->name.compare(name, Qt::CaseInsensitive) == 0)
            throw serverError(1913, "The operation failed because an index with name '%1' already exists.",
                              name);
    const qint64 id =
        m_session.catalog.addObject(m_table.database, ObjectKind::Index, name, m_table.id, known.join(u'\n'));
    if (unique)
        addUnique(id, known, ObjectKind::Index);
    else
        m_session.file.run(QString("CREATE INDEX \"ix%1_0\" ON ").arg(id) + m_table.sqlName() + '('
                           + quoted(known).join(u',') + ')');
}

void ConstraintBuilder::setDefault(const QString& name, const QString& value) {
    Column column = *m_session.catalog.object(m_table.id)->column(name);
    column.defaultText = value;
    m_session.catalog.changeColumn(m_table.id, column);
}

void ConstraintBuilder::addTemporaryKey(const ConstraintDef& constraint, int number) {
    if (constraint.kind == ObjectKind::Default) return; // the column has its value already
    const QStringList columns = knownColumns(constraint.columns);
    m_session.file.run("CREATE UNIQUE INDEX temp."
                       + sqliteName(m_table.storage + '#' + QString::number(number)) + " ON "
                       + sqliteName(m_table.storage) + '(' + quoted(columns).join(u',') + ')');
}

void ConstraintBuilder::addUnique(qint64 id, const QStringList& columns, ObjectKind kind) {
    QStringList nullable;
    for (const QString& name : columns) {
        const Column* column = m_table.column(name);
        // The identity column is SQLite's own key already.
        if (column->identity && columns.size() == 1) return;
        if (kind == ObjectKind::PrimaryKey && column->nullable)
            throw serverError(8111, "Cannot define PRIMARY KEY constraint on nullable column in table '%1'.",
                              m_table.name);
        if (column->nullable) nullable.append(name);
    }
    // To SQLite all NULLs differ, to the server they are alike.
    if (nullable.size() > 1) throw notSupported("UNIQUE over several columns that may be NULL");
    const QString start = QString("CREATE UNIQUE INDEX \"ix%1_").arg(id);
    try {
        m_session.file.run(start + "0\" ON " + m_table.sqlName() + '(' + quoted(columns).join(u',') + ')');
        if (nullable.isEmpty()) return;
        QStringList others = columns;
        others.removeAll(nullable[0]);
        const QString column = sqliteName(nullable[0]);
        m_session.file.run(start + "1\" ON " + m_table.sqlName() + '('
                           + (QStringList{'(' + column + " IS NULL)"} + quoted(others)).join(u',')
                           + ") WHERE " + column + " IS NULL");
    } catch (const ConstraintError&) {
        throw serverError(1505, "A duplicate key was found for the object name 'dbo.%1'.", m_table.name);
    }
}

void ConstraintBuilder::remove(Session& session, const Object& part) {
    for (int number = 0; number < 2; ++number)
        session.file.run(QString("DROP INDEX IF EXISTS \"ix%1_%2\"").arg(part.id).arg(number));
    for (int number = 0; number < 4; ++number) // of a FOREIGN KEY or CHECK that an earlier build made
        session.file.run(QString("DROP TRIGGER IF EXISTS \"tr%1_%2\"").arg(part.id).arg(number));
}

DbError constraintError(const Session& session, const QString& message) {
    if (message.startsWith("constraint ")) // from a trigger that an earlier build made
        return DbError(547, "The statement conflicted with a FOREIGN KEY or CHECK constraint.");
    if (const QString check = message.section(": ", 1); check.startsWith("identity "))
        return serverError(8115, "Arithmetic overflow error converting IDENTITY to data type %1.",
                           check.mid(9));
    const Object* key = keyNamed(session, message.section(": ", 1));
    const Object* table = key ? session.catalog.object(key->parent) : nullptr;
    if (key && key->kind == ObjectKind::Index)
        return serverError(2601, "Cannot insert duplicate key row in object 'dbo.%1' with unique index '%2'.",
                           table->name, key->name);
    return serverError(2627,
                       "Violation of %1 constraint '%2'. Cannot insert duplicate key in object 'dbo.%3'.",
                       key && key->kind == ObjectKind::Unique ? "UNIQUE KEY" : "PRIMARY KEY",
                       key ? key->name : QString(), table ? table->name : QString());
}

} // namespace embedded
