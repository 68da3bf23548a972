#include "embedded/ConstraintErrors.h"

namespace embedded {

namespace {

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

DbError constraintError(const Session& session, const QString& message) {
    if (message.startsWith("constraint ")) // from a trigger that an earlier build made
        return DbError(547, "The statement conflicted with a FOREIGN KEY or CHECK constraint.");
    const Object* key = keyNamed(session, message.section(": ", 1));
    const Object* table = key ? session.catalog.object(key->parent) : nullptr;
    if (key && key->kind == ObjectKind::Index)
        return DbError(2601,
                       QString("Cannot insert duplicate key row in object 'dbo.%1' with unique index '%2'.")
                           .arg(table->name, key->name));
    return DbError(2627,
                   QString("Violation of %1 constraint '%2'. Cannot insert duplicate key in object 'dbo.%3'.")
                       .arg(key && key->kind == ObjectKind::Unique ? "UNIQUE KEY" : "PRIMARY KEY",
                            key ? key->name : QString(), table ? table->name : QString()));
}

} // namespace embedded
