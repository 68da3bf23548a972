#include "templates/TemplateUsage.h"

#include "base/Session.h"
#include "base/WallClock.h"

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
QHash<int, WallClock> readLatestRuns(Session& session) {
    Sql statement = sql("SELECT DISTINCT [TemplateID], [RanDate] FROM NorvaScheduler.dbo.[tblSchedule] WITH "
                        "(NOLOCK) WHERE ([RanDate] <> '')");
    if (!session.isAdministrator()) statement += sql(" AND Username = {}", session.userName);
    const RecordSet rows = session.db().query(statement);
    QHash<int, WallClock> latest;
    for (const Row row : rows) {
        const auto ran = WallClock::fromStored(row.text(1));
        if (!ran) continue;
        WallClock& known = latest[row.integer(0)]; // the zero date at first, as for a schedule that never ran
        known = std::max(known, *ran);
    }
    return latest;
}

QString shownLastUsed(const QString& lastUsed, const std::optional<WallClock>& latest) {
    if (lastUsed.isEmpty() || lastUsed == "00:00:00") return neverUsed;
    if (!latest) return shownStoredDate(lastUsed); // a text that is no date is shown as it is
    return latest->isZeroDate() ? neverUsed : latest->shown();
}

} // namespace

QList<TemplateUsage> loadTemplateUsage(Session& session) {
    const RecordSet rows = readUsage(session);
    const QHash<int, WallClock> latest = readLatestRuns(session);
    QList<TemplateUsage> usage;
    for (const Row row : rows) {
        const int id = row.integer("TemplateID");
        const auto found = latest.constFind(id);
        const auto known = found == latest.constEnd() ? std::nullopt : std::optional(*found);
        usage.append({id, row.integer("ActiveCount"), shownLastUsed(row.text("LastUsed"), known), known});
    }
    return usage;
}
