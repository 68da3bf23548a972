#include "db/ConnectionString.h"

#include "db/DbError.h"

#include <QHash>

namespace {

QString protectedValue(const QString& value) {
    const bool plain = value == value.trimmed() && !value.contains(u';') && !value.contains(u'=')
                       && !value.contains(u'"') && !value.contains(u'\'');
    return plain ? value : u'"' + QString(value).replace(u'"', "\"\"") + u'"';
}

/// Reads one value from `at` to its closing ";" and moves `at` behind it.
QString readValue(const QString& text, qsizetype& at) {
    while (at < text.size() && text[at].isSpace()) ++at;
    if (at < text.size() && text[at] == u'"') {
        QString value;
        for (++at; at < text.size(); ++at) {
            if (text[at] != u'"')
                value += text[at];
            else if (text.mid(at + 1, 1) == "\"")
                value += text[at++];
            else {
                at = qMax(text.indexOf(u';', at), at) + 1;
                return value;
            }
        }
        throw DbError(0, "The connection string holds a quote that is not closed.");
    }
    qsizetype end = text.indexOf(u';', at);
    if (end < 0) end = text.size();
    QString value = text.mid(at, end - at).trimmed();
    at = end + 1;
    return value;
}

} // namespace

QString ConnectionString::toString() const {
    return "Provider=SQLOLEDB.1;Persist Security Info=False;User ID=" + protectedValue(userId)
           + ";PWD=" + protectedValue(password) + ";Initial Catalog=" + protectedValue(initialCatalog)
           + ";Data Source=" + protectedValue(dataSource);
}

ConnectionString ConnectionString::parse(const QString& text) {
    QHash<QString, QString> values;
    for (qsizetype at = 0; at < text.size();) {
        const qsizetype equals = text.indexOf(u'=', at);
        if (equals < 0) break;
        const QString key = text.mid(at, equals - at).section(u';', -1).trimmed().toLower();
        at = equals + 1;
        values.insert(key, readValue(text, at));
    }
    ConnectionString parsed{values.value("user id"), values.value("pwd"), values.value("initial catalog"),
                            values.value("data source")};
    if (parsed.dataSource.isEmpty()) throw DbError(0, "The connection string names no server.");
    return parsed;
}
