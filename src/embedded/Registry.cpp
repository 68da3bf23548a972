#include "embedded/Registry.h"

namespace embedded::registry {

namespace {

QString plainKey(QString key) {
    while (key.endsWith(u'\\')) key.chop(1);
    return key;
}

} // namespace

Value read(SqliteFile& file, const QString& hive, const QString& key, const QString& name) {
    return file.scalar(R"(SELECT data FROM "~registry" WHERE hive = ?1 AND key = ?2 AND name = ?3)",
                       {hive, plainKey(key), name});
}

void write(SqliteFile& file, const QString& hive, const QString& key, const QString& name,
           const QString& type, const QString& data) {
    file.run(R"(INSERT OR REPLACE INTO "~registry" VALUES (?1, ?2, ?3, ?4, ?5))",
             {hive, plainKey(key), name, type, data});
}

} // namespace embedded::registry
