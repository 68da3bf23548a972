#include "commands/Waiting.h"

#include "base/Session.h"
#include "commands/CommandFailure.h"
#include "commands/Schedules.h"
#include "commands/TerminalText.h"
#include "db/DbError.h"

namespace {

constexpr std::chrono::seconds betweenLooks(3);

ScheduleStatus statusOf(Session& session, int id) {
    const RecordSet rows = session.db().query(sql(
        "SELECT [Status] FROM NorvaScheduler.dbo.[tblSchedule] WITH (NOLOCK) WHERE ([ScheduleID] = {})", id));
    return rows.isEmpty() ? ScheduleStatus::NoSuchSchedule : scheduleStatus(rows.row(0).integer(0));
}

/// Carries a reading out, again and again while the server is away, and tells each reason once.
template <class Reading>
auto patiently(CommandContext& context, Reading reading) {
    QString problem;
    while (true) {
        try {
            auto answer = reading();
            if (!problem.isEmpty()) context.console.tell("The server is back.");
            return answer;
        } catch (const DbError& error) {
            if (error.number() == DbError::Stopped) throw;
            if (std::exchange(problem, error.text()) != error.text())
                context.console.tell("The server cannot be asked, trying again: " + error.text());
        }
        if (!context.pause(betweenLooks)) throw DbError::stopped();
    }
}

} // namespace

void tellSchedule(CommandContext& context, const SeenSchedule& schedule) {
    const ScheduleListRow& row = schedule.row;
    const QString log = logSummary(logOf(context.session, schedule));
    if (context.isSet("json")) {
        QJsonObject json = schedule.json();
        json["log"] = log;
        return context.console.write(jsonText(QJsonDocument(json)));
    }
    QList<QStringList> lines{
        {"ID", QString::number(row.id)}, {"Title", row.title},     {"Status", schedule.status()},
        {"Due", schedule.due()},         {"Ran", schedule.ran()},  {"Contents", row.contents},
        {"Template", row.templateTitle}, {"Project", row.project}, {"Owner", row.owner}};
    if (!row.problem.isEmpty()) lines << QStringList{"Problem", row.problem};
    if (!log.isEmpty()) lines << QStringList{"Log", log};
    context.console.write(tableText({}, lines));
}

namespace {

ExitCode awaitEnd(CommandContext& context, int id) {
    std::optional<ScheduleStatus> last;
    while (true) {
        const ScheduleStatus status = patiently(context, [&] { return statusOf(context.session, id); });
        if (isFinished(status)) break;
        if (status == ScheduleStatus::NoSuchSchedule)
            throw CommandFailure(ExitCode::NotFound,
                                 QString("The schedule %1 has been deleted meanwhile.").arg(id));
        if (std::exchange(last, status) != status)
            context.console.tell(
                QString("The schedule %1 is %2; waiting for its end. Ctrl+C ends the waiting.")
                    .arg(id)
                    .arg(statusText(status).toLower()));
        if (!context.pause(betweenLooks)) throw DbError::stopped();
    }
    return patiently(context, [&] {
        const auto ended = findSchedule(context.session, id);
        if (!ended)
            throw CommandFailure(ExitCode::NotFound,
                                 QString("The schedule %1 is not yours any more.").arg(id));
        tellSchedule(context, *ended);
        return ended->row.status == ScheduleStatus::Completed ? ExitCode::Done : ExitCode::EndedWithErrors;
    });
}

} // namespace

ExitCode waitForEnd(CommandContext& context, int id) {
    try {
        return awaitEnd(context, id);
    } catch (const DbError& error) {
        if (error.number() != DbError::Stopped) throw;
        context.console.tell(QString("The schedule %1 has not ended yet.").arg(id));
        return ExitCode::Interrupted;
    }
}
