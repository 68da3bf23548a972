#include "templates/TemplateUsage.h"

#include "app/Session.h"
#include "app/modCommonFunctions.h"

#include <QHash>

namespace {

constexpr auto neverUsed = "-";

RecordSet readUsage(Session& session) {
    if (session.isAdministrator())
        return session.db().query(
            sql("SELECT [TemplateID], (SELECT COUNT(*) FROM NorvaScheduler.dbo.[tblSchedule] WHERE ([Status] "
                "= 0) AND (NorvaScheduler.dbo.[tblSchedule].[TemplateID] = "
                "NorvaScheduler.dbo.[tblTemplate].[TemplateID]) ) AS [ActiveCount], (SELECT MAX([RanDate]) "
                "FROM NorvaScheduler.dbo.[tblSchedule] WHERE "
                "(NorvaScheduler.dbo.[tblSchedule].[TemplateID] = "
                "NorvaScheduler.dbo.[tblTemplate].[TemplateID]) AND ([RanDate] <> '')) AS [LastUsed] FROM "
                "NorvaScheduler.dbo.[tblTemplate]"));
    return session.db().query(
        sql("SELECT [TemplateID], (SELECT COUNT(*) FROM NorvaScheduler.dbo.[tblSchedule] WHERE ([Status] = "
            "0) AND (NorvaScheduler.dbo.[tblSchedule].[TemplateID] = "
            "NorvaScheduler.dbo.[tblTemplate].[TemplateID]) And Username = {} ) AS [ActiveCount], (SELECT "
            "MAX([RanDate]) FROM NorvaScheduler.dbo.[tblSchedule] WHERE "
            "(NorvaScheduler.dbo.[tblSchedule].[TemplateID] = "
            "NorvaScheduler.dbo.[tblTemplate].[TemplateID]) AND ([RanDate] <> '') AND Username = {}) AS "
            "[LastUsed] FROM NorvaScheduler.dbo.[tblTemplate] ",
            session.userName, session.userName));
}

/// The latest run of each template. Dates are stored as texts with month names, the greatest of which
/// is September's, so the server's MAX tells the right year only.
QHash<int, QDateTime> readLatestRuns(Session& session) {
    Sql statement = sql("SELECT DISTINCT [TemplateID], [RanDate] FROM NorvaScheduler.dbo.[tblSchedule] WITH "
                        "(NOLOCK) WHERE ([RanDate] <> '')");
    if (!session.isAdministrator()) statement += sql(" AND Username = {}", session.userName);
    const RecordSet rows = session.db().query(statement);
    QHash<int, QDateTime> latest;
    for (const Row row : rows) {
        const QDateTime ran = parseStoredDate(row.text(1));
        QDateTime& known = latest[row.integer(0)];
        if (ran.isValid() && (!known.isValid() || ran > known)) known = ran;
    }
    return latest;
}

QString shownLastUsed(const QString& lastUsed, const QDateTime& latest) {
    if (lastUsed.isEmpty() || lastUsed == "00:00:00") return neverUsed;
    if (!latest.isValid()) return shownStoredDate(lastUsed); // a text that is no date is shown as it is
    return latest.date() == zeroDate().date() ? neverUsed : shownDate(latest);
}

} // namespace

QList<TemplateUsage> loadTemplateUsage(Session& session) {
    const RecordSet rows = readUsage(session);
    const QHash<int, QDateTime> latest = readLatestRuns(session);
    QList<TemplateUsage> usage;
    for (const Row row : rows) {
        const int id = row.integer("TemplateID");
        usage.append({id, row.integer("ActiveCount"), shownLastUsed(row.text("LastUsed"), latest.value(id))});
    }
    return usage;
}
