#include "schedules/ScheduleSeries.h"

#include "base/Session.h"
#include "db/ColumnText.h"
#include "db/Refusal.h"
#include "db/ServerText.h"
#include "db/StoredTitle.h"
#include "schedules/clsSchedule.h"
#include "schedules/modScheduler.h"
#include "templates/modTemplates.h"

namespace {

RecordSet rowsOfTitles(Session& session, const QList<ScheduleRow>& rows) {
    QList<Sql> titles;
    for (const ScheduleRow& row : rows) titles << Sql::value(row.title);
    return session.db().query(
        sql("SELECT * FROM NorvaScheduler.dbo.[tblSchedule] WITH (NOLOCK) WHERE ([ScheduleTitle] IN ({}))",
            Sql::join(titles, sql(", "))));
}

/// Whether the rows found are those that are to be written.
bool areThere(const RecordSet& found, const QList<ScheduleRow>& rows) {
    if (found.rowCount() != rows.size()) return false;
    QHash<QString, ScheduleRow> known;
    for (const Row row : found) known.insert(serverKey(row.text("ScheduleTitle")), ScheduleRow::read(row));
    return std::ranges::all_of(rows, [&](const ScheduleRow& row) {
        const ScheduleRow twin = known.value(serverKey(row.title));
        return twin.decidesAs(row) && twin.userName == row.userName;
    });
}

QStringList titlesOf(const RecordSet& rows) {
    QStringList titles;
    for (const Row row : rows) titles << row.text("ScheduleTitle");
    return titles;
}

} // namespace

QStringList usedTitles(Session& session, const QList<ScheduleRow>& rows) {
    const RecordSet found = rowsOfTitles(session, rows);
    return areThere(found, rows) ? QStringList() : titlesOf(found);
}

QStringList saveSeries(Session& session, const QList<ScheduleRow>& rows) {
    QList<Sql> inserts;
    for (const ScheduleRow& row : rows) {
        if (const auto date = WallClock::fromStored(row.runDate))
            if (const QString problem = runDateProblem(*date); !problem.isEmpty()) throw Refusal(problem);
        requireFits("schedule title", shownTitle(row.title), clsSchedule::longestTitle, CodePage::Unicode);
        inserts << row.insertion();
    }
    Transaction transaction(session.db());
    lockTemplates(session.db()); // before the schedules, as everybody does
    lockSchedules(session.db());
    if (!readTemplateType(session.db(), rows.first().templateId))
        throw Refusal("This template has been deleted by somebody else in the meantime.");
    const RecordSet found = rowsOfTitles(session, rows);
    if (areThere(found, rows)) return {};
    if (!found.isEmpty()) return titlesOf(found);
    session.db().executeAll(inserts);
    transaction.commit();
    return {};
}
