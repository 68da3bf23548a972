#include "embedded/SystemViews.h"

#include "embedded/Collation.h"

namespace embedded {

namespace {

const QString typeCode = QString("substr('%1', kind * 2 + 1, 2) COLLATE T").arg(typeCodes);

struct ViewColumn {
    const char* name;
    const char* type;
    QString sql;
};

struct Definition {
    const char* schema; ///< "" is dbo as well as sys
    const char* name;
    std::vector<ViewColumn> columns;
    const char* from; ///< %1 is the database's id
};

const std::vector<Definition>& definitions() {
    static const std::vector<Definition> all{
        {"",
         "sysobjects",
         {{"name", "nvarchar(128)", "name"},
          {"id", "int", "id"},
          {"xtype", "char(2)", typeCode},
          {"uid", "smallint", "1"},
          {"parent_obj", "int", "parent"},
          {"crdate", "datetime", "created"},
          {"type", "char(2)", typeCode}},
         "\"~objects\" WHERE database = %1 AND kind < 8"},
        {"",
         "syscolumns",
         {{"name", "nvarchar(128)", "c.name"},
          {"id", "int", "c.object"},
          {"xtype", "tinyint", "c.xtype"},
          {"length", "smallint", "c.length"},
          {"prec", "smallint", "c.precision"},
          {"scale", "int", "c.scale"},
          {"colid", "smallint", "c.place"},
          {"colorder", "smallint", "c.place"},
          {"isnullable", "int", "c.nullable"},
          {"status", "tinyint", "c.identity * 128 + c.nullable * 8"}},
         "\"~columns\" c JOIN \"~objects\" o ON o.id = c.object WHERE o.database = %1"},
        {"",
         "sysdatabases",
         {{"name", "nvarchar(128)", "name"},
          {"dbid", "smallint", "id"},
          {"status", "int", "0"},
          {"crdate", "datetime", "created"}},
         "\"~databases\""},
        {"",
         "syslogins",
         {{"name", "nvarchar(128)", "name"}, {"loginname", "nvarchar(128)", "name"}},
         "\"~logins\""},
        {"sys",
         "databases",
         {{"name", "nvarchar(128)", "name"},
          {"database_id", "int", "id"},
          {"create_date", "datetime", "created"}},
         "\"~databases\""},
        {"sys",
         "objects",
         {{"name", "nvarchar(128)", "name"},
          {"object_id", "int", "id"},
          {"schema_id", "int", "1"},
          {"parent_object_id", "int", "parent"},
          {"type", "char(2)", typeCode},
          {"create_date", "datetime", "created"}},
         "\"~objects\" WHERE database = %1 AND kind < 8"},
        {"sys",
         "tables",
         {{"name", "nvarchar(128)", "name"},
          {"object_id", "int", "id"},
          {"create_date", "datetime", "created"}},
         "\"~objects\" WHERE database = %1 AND kind = 0"},
        {"sys",
         "procedures",
         {{"name", "nvarchar(128)", "name"},
          {"object_id", "int", "id"},
          {"create_date", "datetime", "created"}},
         "\"~objects\" WHERE database = %1 AND kind = 2"},
        {"sys",
         "columns",
         {{"object_id", "int", "c.object"},
          {"name", "nvarchar(128)", "c.name"},
          {"column_id", "int", "c.place"},
          {"system_type_id", "tinyint", "c.xtype"},
          {"max_length", "smallint", "c.length"},
          {"precision", "smallint", "c.precision"},
          {"scale", "int", "c.scale"},
          {"is_nullable", "bit", "c.nullable"},
          {"is_identity", "bit", "c.identity"}},
         "\"~columns\" c JOIN \"~objects\" o ON o.id = c.object WHERE o.database = %1"},
    };
    return all;
}

bool schemaFits(const QString& asked, const QString& owner) {
    if (owner.isEmpty())
        return asked.isEmpty() || collation::equal(asked, "dbo") || collation::equal(asked, "sys");
    return collation::equal(asked, owner);
}

} // namespace

std::optional<SystemView> systemView(const QString& schema, const QString& name, const Database& database) {
    static_assert(int(ObjectKind::Index) == 8, "the views above leave out indexes by this number");
    for (const Definition& definition : definitions()) {
        if (!collation::equal(name, definition.name) || !schemaFits(schema, definition.schema)) continue;
        SystemView view;
        QStringList columns;
        for (const auto& [column, type, sql] : definition.columns) {
            columns.append(sql + " AS " + sqliteName(column));
            view.columns.append({column, Type::parse(QString(type)), true, false, {}});
        }
        view.sql = "SELECT " + columns.join(u',') + " FROM "
                   + QString(definition.from).replace("%1", QString::number(database.id));
        return view;
    }
    return std::nullopt;
}

} // namespace embedded
