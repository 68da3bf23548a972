#pragma once

#include "embedded/Schema.h"
#include "embedded/Sqlite.h"

#include <QHash>
#include <QMap>
#include <QSet>
#include <QStringList>

namespace embedded {

/// "U ", "P ", "PK", … as in sysobjects.xtype: two letters for each kind of object but indexes.
constexpr const char* typeCodes = "U V P PKUQF C D ";

/// A table, procedure, constraint or index of a database, or a temporary table.
struct Object {
    qint64 id = 0;
    qint64 database = 0;
    qint64 parent = 0; ///< of a constraint or index: its table
    ObjectKind kind = ObjectKind::Table;
    QString name;
    QString text;    ///< of a procedure; of a constraint or index the names of its columns, by line
    QString storage; ///< of a table: its bare name in SQLite
    QList<Column> columns;

    bool isTemporary() const { return id == 0; }
    /// "" or "temp.": where SQLite keeps the table.
    QString schema() const { return isTemporary() ? QString("temp.") : QString(); }
    /// A table's name in SQLite's wording.
    QString sqlName() const { return schema() + sqliteName(storage); }
    QStringList keyColumns() const { return text.split(u'\n'); }
    const Column* column(const QString& wanted) const { return columnNamed(columns, wanted); }
    const Column* identityColumn() const;
};

/// The column as SQLite has it. Whole numbers are typed, or a join over them could not use its indexes; all
/// else is untyped there, since the translator converts every value before it is stored.
QString declaration(const Column& column);

struct Database {
    qint64 id = 0;
    QString name;
    QHash<QString, bool> access; ///< of the logins that have a user in it, by folded name: false is denied
};

/// What the server holds: databases and their objects, kept in tables of their own ("~…") in the file
/// and read whole into memory. Another session's change is noticed by the version in the file.
class Catalog {
public:
    explicit Catalog(SqliteFile& file) : m_file(file) {}

    /// Makes the catalogue's tables and the system databases in a new file.
    static void createIn(SqliteFile& file);
    static bool isServerFile(SqliteFile& file);
    /// Brings a file that the previous build made to what this one makes.
    void upgrade();

    /// Reads again what another session changed; call before a statement.
    void refresh();
    void invalidate() { m_loadedVersion = -1; }
    /// Grows with every change by any session.
    qint64 version() const { return m_loadedVersion; }

    const QMap<qint64, Database>& databases() const { return m_databases; }
    const Database* database(const QString& name) const; ///< null when there is none
    const Object* object(qint64 database, const QString& name) const;
    const Object* object(qint64 id) const;
    /// Constraints and indexes of a table.
    QList<const Object*> partsOf(qint64 table) const;
    QList<const Object*> objectsIn(qint64 database) const;

    qint64 addDatabase(const QString& name);
    void removeDatabase(qint64 id);
    void setAccess(qint64 database, const QString& login, bool allowed);
    void removeLogin(const QString& login);
    /// Returns its id.
    qint64 addObject(qint64 database, ObjectKind kind, const QString& name, qint64 parent,
                     const QString& text);
    void removeObject(qint64 id);
    void setText(qint64 id, const QString& text);
    void addColumn(qint64 table, const Column& column);
    void changeColumn(qint64 table, const Column& column);
    void removeColumn(qint64 table, const QString& name);

    /// A table's name in SQLite: "database.table", dots inside a name doubled.
    static QString storageName(const QString& database, const QString& table);

private:
    void load();
    void changed();
    void insert(const Database& database);
    void insert(Object object);
    void forget(const Object& object);

    SqliteFile& m_file;
    qint64 m_loadedVersion = -1;
    qint64 m_dataVersion = -1;
    QMap<qint64, Database> m_databases;
    QHash<QString, qint64> m_databaseIds; ///< by folded name
    QMap<qint64, Object> m_objects;
    QHash<QPair<qint64, QString>, qint64> m_objectIds; ///< by database and folded name
};

} // namespace embedded
