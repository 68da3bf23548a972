#pragma once

#include "embedded/Sqlite.h"
#include "embedded/Type.h"

#include <QHash>
#include <QMap>
#include <QSet>
#include <QStringList>

namespace embedded {

struct Column {
    QString name;
    Type type;
    bool nullable = true;
    bool identity = false;
    QString defaultText;
};

/// A table, view, procedure or constraint of a database.
struct Object {
    enum Kind { Table, View, Procedure, PrimaryKey, Unique, ForeignKey, Check, Default, Index };
    qint64 id = 0;
    qint64 database = 0;
    qint64 parent = 0; ///< of a constraint or index: its table
    Kind kind = Table;
    QString name;
    QString text;    ///< of a view or procedure; of a constraint what its owner keeps
    QString storage; ///< of a table: its quoted name in SQLite
    QList<Column> columns;

    const Column* column(const QString& name) const;
    const Column* identityColumn() const;
};

struct Database {
    qint64 id = 0;
    QString name;
    QSet<QString> denied; ///< folded names of the logins kept out
};

/// What the server holds: databases and their objects, kept in tables of their own ("~…") in the file
/// and read whole into memory. Another session's change is noticed by the version in the file.
class Catalog {
public:
    explicit Catalog(SqliteFile& file) : m_file(file) {}

    /// Makes the catalogue's tables and the system databases in a new file.
    static void createIn(SqliteFile& file);
    static bool isServerFile(SqliteFile& file);

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
    void setDenied(qint64 database, const QString& login, bool denied);
    /// Returns its id.
    qint64 addObject(qint64 database, Object::Kind kind, const QString& name, qint64 parent,
                     const QString& text);
    void removeObject(qint64 id);
    void setText(qint64 id, const QString& text);
    void addColumn(qint64 table, const Column& column);
    void changeColumn(qint64 table, const Column& column);
    void removeColumn(qint64 table, const QString& name);

    /// A table's quoted name in SQLite: "database.table", dots inside a name doubled.
    static QString storageName(const QString& database, const QString& table);
    /// "U ", "V ", "P ", "PK", … as in sysobjects.xtype.
    static QString typeCode(Object::Kind kind);

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
