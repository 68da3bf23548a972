#pragma once

#include "db/DbError.h"
#include "embedded/EmbeddedServer.h"

#include <QTemporaryDir>

/// A server file of a test's own, and short ways to talk to it.
class ServerFile {
public:
    ServerFile() { embedded::EmbeddedServer::create(path(), "secret"); }

    QString path() const { return m_folder.filePath("server.db"); }
    ConnectionString target(const QString& database = {}, const QString& user = "sa",
                            const QString& password = "secret") const {
        return {user, password, database, "file:" + path()};
    }
    std::unique_ptr<embedded::EmbeddedServer> open(const QString& database = {},
                                                   const QString& user = "sa") const {
        return embedded::EmbeddedServer::open(target(database, user));
    }

private:
    QTemporaryDir m_folder;
};

/// The last record set of a batch: cells with | between, rows with ; between, NULL for null.
inline QString rowsOf(Server& server, const QString& batch) {
    const Results results = server.execute(Sql::script(batch));
    if (results.sets.empty()) return "no rows";
    QStringList rows;
    for (const Row row : results.sets.back()) {
        QStringList cells;
        for (int i = 0; i < results.sets.back().columns().size(); ++i)
            cells.append(row.isNull(i) ? "NULL" : row.text(i));
        rows.append(cells.join(u'|'));
    }
    return rows.join(u';');
}

/// The error's number, -1 for what the server says it does not support, 0 when there is none.
inline int errorNumber(Server& server, const QString& batch) {
    try {
        server.execute(Sql::script(batch));
    } catch (const DbError& error) {
        if (error.text().startsWith("not supported by the embedded server: ")) return -1;
        return error.number() == 0 ? -2 : error.number();
    }
    return 0;
}
