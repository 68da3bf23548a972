#include "schedules/ScheduleChoices.h"

#include "base/Session.h"
#include "db/DbError.h"

namespace {

bool databaseExists(Connection& db, const QString& database) {
    return db.scalar(sql("SELECT COUNT(*) FROM master.dbo.sysdatabases WHERE [name] = {}", database)).toInt()
           > 0;
}

} // namespace

QString projectProblem(Session& session, const QString& database) {
    Connection& db = session.db();
    QString problem;
    try {
        const QString bills =
            db.scalar(sql("SELECT COUNT(*) From {}.dbo.Tbl50 WITH (NOLOCK) ", Name(database)));
        return bills.toInt() > 0 ? QString() : QString("The project '%1' holds no bills yet.").arg(database);
    } catch (const DbError& error) {
        if (error.connectionLost()) throw;
        problem = error.number() == DbError::InvalidObject
                      ? QString("The database '%1' is no project: it has no table of bills.").arg(database)
                      : QString("The project '%1' cannot be opened: %2").arg(database, error.text());
    }
    // Servers answer a missing database like a missing table.
    return databaseExists(db, database)
               ? problem
               : QString("The project '%1' no longer exists on this server.").arg(database);
}

QList<TemplateHeader> templatesOfAccount(Session& session, const QString& account) {
    const RecordSet rows = session.db().query(sql("SELECT * FROM NorvaScheduler.dbo.[tblTemplate] WITH "
                                                  "(NOLOCK) WHERE ([UnitabAccount] = {}) ORDER BY [Title]",
                                                  account));
    QList<TemplateHeader> templates;
    for (const Row row : rows) templates << TemplateHeader::read(row);
    return templates;
}
