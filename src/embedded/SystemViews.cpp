#include "embedded/SystemViews.h"

#include "embedded/Collation.h"

namespace embedded {

namespace {

/// `columns` has a name, a type and SQLite's expression for each, bars between them.
struct Definition {
    const char* schema; ///< "" is dbo as well as sys
    const char* name;
    const char* columns; ///< %1 is the type code of an object
    const char* from;    ///< %1 is the database's id
};

constexpr const char* objectsFrom = R"("~objects" WHERE database = %1 AND kind < 8)";
// In the order in which they were made, not in that of their names.
constexpr const char* databasesFrom = R"("~databases" NOT INDEXED)";
constexpr const char* columnsFrom =
    R"("~columns" c JOIN "~objects" o ON o.id = c.object WHERE o.database = %1)";

constexpr Definition definitions[] = {
    {"", "sysobjects",
     "name nvarchar(128) name|id int id|xtype char(2) %1|uid smallint 1|parent_obj int parent|"
     "crdate datetime created|type char(2) %1",
     objectsFrom},
    {"", "syscolumns",
     "name nvarchar(128) c.name|id int c.object|xtype tinyint c.xtype|length smallint c.length|"
     "prec smallint c.precision|scale int c.scale|colid smallint c.place|colorder smallint c.place|"
     "isnullable int c.nullable|status tinyint c.identity * 128 + c.nullable * 8",
     columnsFrom},
    {"", "sysdatabases", "name nvarchar(128) name|dbid smallint id|status int 0|crdate datetime created",
     databasesFrom},
    {"", "syslogins", "name nvarchar(128) name|loginname nvarchar(128) name", R"("~logins")"},
    {"sys", "databases", "name nvarchar(128) name|database_id int id|create_date datetime created",
     databasesFrom},
    {"sys", "objects",
     "name nvarchar(128) name|object_id int id|schema_id int 1|parent_object_id int parent|"
     "type char(2) %1|create_date datetime created",
     objectsFrom},
    {"sys", "tables", "name nvarchar(128) name|object_id int id|create_date datetime created",
     R"("~objects" WHERE database = %1 AND kind = 0)"},
    {"sys", "procedures", "name nvarchar(128) name|object_id int id|create_date datetime created",
     R"("~objects" WHERE database = %1 AND kind = 2)"},
    {"sys", "columns",
     "object_id int c.object|name nvarchar(128) c.name|column_id int c.place|"
     "system_type_id tinyint c.xtype|max_length smallint c.length|precision smallint c.precision|"
     "scale int c.scale|is_nullable bit c.nullable|is_identity bit c.identity",
     columnsFrom},
};

bool schemaFits(const QString& asked, const QString& owner) {
    if (owner.isEmpty())
        return asked.isEmpty() || collation::equal(asked, "dbo") || collation::equal(asked, "sys");
    return collation::equal(asked, owner);
}

} // namespace

std::optional<SystemView> systemView(const ObjectName& name, const Database* database) {
    static_assert(int(ObjectKind::Index) == 8, "the views above leave out indexes by this number");
    if (!database) return std::nullopt;
    for (const Definition& definition : definitions) {
        if (!collation::equal(name.name, definition.name) || !schemaFits(name.schema, definition.schema))
            continue;
        SystemView view;
        QStringList columns;
        const QString code = QString("substr('%1', kind * 2 + 1, 2) COLLATE T").arg(typeCodes);
        for (const QString& column : QString(definition.columns).replace("%1", code).split(u'|')) {
            const QString columnName = column.section(u' ', 0, 0);
            columns.append(column.section(u' ', 2) + " AS " + sqliteName(columnName));
            view.columns.append({columnName, Type::parse(column.section(u' ', 1, 1)), true, false, {}});
        }
        view.sql = "SELECT " + columns.join(u',') + " FROM "
                   + QString(definition.from).replace("%1", QString::number(database->id));
        return view;
    }
    return std::nullopt;
}

} // namespace embedded
