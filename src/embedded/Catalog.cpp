#include "embedded/Catalog.h"

#include "embedded/Collation.h"
#include "embedded/Conversion.h"

#include <QDateTime>

namespace embedded {

namespace {

// Mark a file as one of ours; by the first its columns have types, which the previous build knew not to keep.
constexpr int applicationId = 0x5a455654;
constexpr int formerApplicationId = 0x5a455653;

constexpr auto accessTable = R"("~access" (database INTEGER, login TEXT COLLATE T, allowed INTEGER,
                 PRIMARY KEY (database, login)))";
constexpr auto identity = " INTEGER PRIMARY KEY AUTOINCREMENT";
constexpr auto untyped = " COLLATE T";

QString now() {
    return QDateTime::currentDateTime().toString("yyyy-MM-dd HH:mm:ss.zzz");
}

} // namespace

const Column* columnNamed(const QList<Column>& columns, const QString& name) {
    for (const Column& candidate : columns)
        if (candidate.name == name || collation::equal(candidate.name, name)) return &candidate;
    return nullptr;
}

const Column* Object::identityColumn() const {
    for (const Column& candidate : columns)
        if (candidate.identity) return &candidate;
    return nullptr;
}

QString declaration(const Column& column) {
    if (column.identity) {
        const QString range = " CONSTRAINT \"identity %1\" CHECK (%2 <= %3)";
        const Type type = column.type.isInteger() ? column.type : Type::of(Type::BigInt);
        return sqliteName(column.name) + identity
               + range.arg(column.type.toString(), sqliteName(column.name))
                     .arg(qint64(rangeOf(type.kind).high));
    }
    return sqliteName(column.name) + (column.type.isInteger() ? " INTEGER" : "") + untyped;
}

void Catalog::createIn(SqliteFile& file) {
    file.run("PRAGMA journal_mode = WAL");
    Savepoint together(file);
    for (
        const char* table : {
            R"("~databases" (id INTEGER PRIMARY KEY AUTOINCREMENT, name TEXT COLLATE T UNIQUE, created TEXT))",
            R"("~objects" (id INTEGER PRIMARY KEY AUTOINCREMENT, database INTEGER, kind INTEGER, name TEXT COLLATE T,
                 parent INTEGER, text TEXT, created TEXT))",
            R"("~columns" (object INTEGER, place INTEGER, name TEXT COLLATE T, type TEXT, nullable INTEGER,
                 identity INTEGER, default_text TEXT, xtype INTEGER, length INTEGER, precision INTEGER,
                 scale INTEGER, PRIMARY KEY (object, place)))",
            accessTable,
            R"("~logins" (id INTEGER PRIMARY KEY AUTOINCREMENT, name TEXT COLLATE T UNIQUE, hash TEXT,
                 default_database TEXT))",
            R"("~members" (role TEXT COLLATE T, login TEXT COLLATE T, PRIMARY KEY (role, login)))",
            R"("~registry" (hive TEXT COLLATE T, key TEXT COLLATE T, name TEXT COLLATE T, type TEXT, data TEXT,
                 PRIMARY KEY (hive, key, name)))",
        })
        file.run(QString("CREATE TABLE ") + table);
    file.run(R"(CREATE INDEX "~names" ON "~objects" (database, name))");
    for (const char* name : {"master", "tempdb", "model", "msdb"})
        file.run(R"(INSERT INTO "~databases" (name, created) VALUES (?1, ?2))", {QString(name), now()});
    file.run(QString("PRAGMA application_id = %1").arg(applicationId));
    file.run("PRAGMA user_version = 1");
    together.release();
}

bool Catalog::isServerFile(SqliteFile& file) {
    const qint64 id = std::get<qint64>(file.scalar("PRAGMA application_id"));
    return id == applicationId || id == formerApplicationId;
}

void Catalog::upgrade() {
    const auto isDone = [this] {
        return std::get<qint64>(m_file.scalar("PRAGMA application_id")) == applicationId;
    };
    if (isDone()) return;
    Savepoint together(m_file);
    if (isDone()) return; // by another session, meanwhile
    // A login could enter every database that it was not kept out of.
    m_file.run(QString("CREATE TABLE ") + accessTable);
    m_file.run(R"(INSERT INTO "~access" SELECT d.id, l.name, NOT EXISTS (SELECT 1 FROM "~denied" x
                  WHERE x.database = d.id AND x.login = l.name) FROM "~databases" d, "~logins" l)");
    m_file.run(R"(DROP TABLE "~denied")");
    refresh();
    std::vector<SqliteFile::Redeclaration> changes;
    for (const Object& table : m_objects)
        for (const Column& column : table.columns)
            changes.push_back({table.storage,
                               sqliteName(column.name) + (column.identity ? identity : untyped),
                               declaration(column)});
    m_file.redeclare(changes);
    m_file.run(QString("PRAGMA application_id = %1").arg(applicationId));
    together.release();
}

void Catalog::refresh() {
    // The first is cheap and tells that another session wrote anything at all; the second what we need.
    const qint64 dataVersion = std::get<qint64>(m_file.scalar("PRAGMA data_version"));
    if (m_loadedVersion >= 0 && dataVersion == m_dataVersion) return;
    m_dataVersion = dataVersion;
    const qint64 version = std::get<qint64>(m_file.scalar("PRAGMA user_version"));
    if (version == m_loadedVersion) return;
    load();
    m_loadedVersion = version;
}

void Catalog::load() {
    m_databases.clear();
    m_databaseIds.clear();
    m_objects.clear();
    m_objectIds.clear();
    SqliteStatement databases = m_file.prepare(R"(SELECT id, name FROM "~databases")");
    while (databases.step()) insert(Database{databases.integer(0), databases.text(1), {}});
    SqliteStatement access = m_file.prepare(R"(SELECT database, login, allowed FROM "~access")");
    while (access.step())
        m_databases[access.integer(0)].access[collation::fold(access.text(1))] = access.integer(2) != 0;
    SqliteStatement objects =
        m_file.prepare(R"(SELECT id, database, kind, name, parent, text FROM "~objects")");
    while (objects.step())
        insert({objects.integer(0),
                objects.integer(1),
                objects.integer(4),
                ObjectKind(objects.integer(2)),
                objects.text(3),
                objects.text(5),
                {},
                {}});
    SqliteStatement columns = m_file.prepare(
        R"(SELECT object, name, type, nullable, identity, default_text FROM "~columns" ORDER BY object, place)");
    while (columns.step())
        m_objects[columns.integer(0)].columns.append({columns.text(1), Type::parse(columns.text(2)),
                                                      columns.integer(3) != 0, columns.integer(4) != 0,
                                                      columns.text(5)});
}

const Database* Catalog::database(const QString& name) const {
    const auto id = m_databaseIds.constFind(collation::fold(name));
    return id == m_databaseIds.constEnd() ? nullptr : &*m_databases.constFind(*id);
}

const Object* Catalog::object(qint64 database, const QString& name) const {
    const auto id = m_objectIds.constFind({database, collation::fold(name)});
    return id == m_objectIds.constEnd() ? nullptr : object(*id);
}

const Object* Catalog::object(qint64 id) const {
    const auto found = m_objects.constFind(id);
    return found == m_objects.constEnd() ? nullptr : &*found;
}

QList<const Object*> Catalog::partsOf(qint64 table) const {
    QList<const Object*> parts;
    for (const Object& object : m_objects)
        if (object.parent == table) parts.append(&object);
    return parts;
}

QList<const Object*> Catalog::objectsIn(qint64 database) const {
    QList<const Object*> objects;
    for (const Object& object : m_objects)
        if (object.database == database) objects.append(&object);
    return objects;
}

/// Marks the catalogue as changed in the file, for the other sessions. What is in memory has been changed
/// alongside; after an error or a rollback it is invalidated and read again.
void Catalog::changed() {
    const qint64 version = std::get<qint64>(m_file.scalar("PRAGMA user_version")) + 1;
    m_file.run(QString("PRAGMA user_version = %1").arg(version));
    m_loadedVersion = version;
}

void Catalog::insert(const Database& database) {
    m_databaseIds.insert(collation::fold(database.name), database.id);
    m_databases.insert(database.id, database);
}

void Catalog::insert(Object object) {
    if (object.kind == ObjectKind::Table)
        object.storage = storageName(m_databases.value(object.database).name, object.name);
    // Names of indexes count within their table only.
    if (object.kind != ObjectKind::Index)
        m_objectIds.insert({object.database, collation::fold(object.name)}, object.id);
    m_objects.insert(object.id, object);
}

void Catalog::forget(const Object& object) {
    if (object.kind != ObjectKind::Index) m_objectIds.remove({object.database, collation::fold(object.name)});
    m_objects.remove(object.id);
}

qint64 Catalog::addDatabase(const QString& name) {
    m_file.run(R"(INSERT INTO "~databases" (name, created) VALUES (?1, ?2))", {name, now()});
    insert(Database{m_file.lastRowId(), name, {}});
    changed();
    return m_databaseIds.value(collation::fold(name));
}

void Catalog::removeDatabase(qint64 id) {
    m_file.run(R"(DELETE FROM "~columns" WHERE object IN (SELECT id FROM "~objects" WHERE database = ?1))",
               {id});
    m_file.run(R"(DELETE FROM "~objects" WHERE database = ?1)", {id});
    m_file.run(R"(DELETE FROM "~access" WHERE database = ?1)", {id});
    m_file.run(R"(DELETE FROM "~databases" WHERE id = ?1)", {id});
    for (const Object* object : objectsIn(id)) forget(Object(*object));
    m_databaseIds.remove(collation::fold(m_databases.take(id).name));
    changed();
}

void Catalog::setAccess(qint64 database, const QString& login, bool allowed) {
    m_file.run(R"(INSERT OR REPLACE INTO "~access" VALUES (?1, ?2, ?3))", {database, login, qint64(allowed)});
    m_databases[database].access[collation::fold(login)] = allowed;
    changed();
}

void Catalog::removeLogin(const QString& login) {
    m_file.run(R"(DELETE FROM "~access" WHERE login = ?1)", {login});
    for (Database& database : m_databases) database.access.remove(collation::fold(login));
    changed();
}

qint64 Catalog::addObject(qint64 database, ObjectKind kind, const QString& name, qint64 parent,
                          const QString& text) {
    m_file.run(R"(INSERT INTO "~objects" (database, kind, name, parent, text, created)
                  VALUES (?1, ?2, ?3, ?4, ?5, ?6))",
               {database, qint64(kind), name, parent, text, now()});
    const qint64 id = m_file.lastRowId();
    insert({id, database, parent, kind, name, text, {}, {}});
    changed();
    return id;
}

void Catalog::removeObject(qint64 id) {
    m_file.run(R"(DELETE FROM "~columns" WHERE object = ?1)", {id});
    m_file.run(R"(DELETE FROM "~objects" WHERE id = ?1 OR parent = ?1)", {id});
    for (const Object* part : partsOf(id)) forget(Object(*part));
    forget(m_objects.value(id));
    changed();
}

void Catalog::setText(qint64 id, const QString& text) {
    m_file.run(R"(UPDATE "~objects" SET text = ?2 WHERE id = ?1)", {id, text});
    m_objects[id].text = text;
    changed();
}

void Catalog::addColumn(qint64 table, const Column& column) {
    m_file.run(R"(INSERT INTO "~columns" VALUES (?1,
                  (SELECT ifnull(max(place), 0) + 1 FROM "~columns" WHERE object = ?1), ?2, '', 0, 0, '', 0, 0, 0, 0))",
               {table, column.name});
    m_objects[table].columns.append(column);
    changeColumn(table, column);
}

void Catalog::changeColumn(qint64 table, const Column& column) {
    m_file.run(
        R"(UPDATE "~columns" SET type = ?3, nullable = ?4, identity = ?5, default_text = ?6, xtype = ?7,
                  length = ?8, precision = ?9, scale = ?10 WHERE object = ?1 AND name = ?2)",
        {table, column.name, column.type.toString(), qint64(column.nullable), qint64(column.identity),
         column.defaultText, qint64(column.type.systemNumber()), qint64(column.type.storageLength()),
         qint64(column.type.isNumber() ? column.type.digits() : column.type.length),
         qint64(column.type.scale)});
    for (Column& known : m_objects[table].columns)
        if (known.name == column.name) known = column;
    changed();
}

void Catalog::removeColumn(qint64 table, const QString& name) {
    m_file.run(R"(DELETE FROM "~columns" WHERE object = ?1 AND name = ?2)", {table, name});
    m_objects[table].columns.removeIf([&](const Column& column) { return column.name == name; });
    changed();
}

QString Catalog::storageName(const QString& database, const QString& table) {
    return QString(database).replace(u'.', "..") + '.' + QString(table).replace(u'.', "..");
}

} // namespace embedded
