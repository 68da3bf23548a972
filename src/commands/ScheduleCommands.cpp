#include "commands/ScheduleCommands.h"

#include "base/FilterWords.h"
#include "base/Session.h"
#include "commands/CommandFailure.h"
#include "commands/Schedules.h"
#include "commands/TerminalText.h"
#include "commands/Waiting.h"
#include "schedules/modScheduler.h"

#include <QJsonArray>

namespace {

/// Throws CommandFailure of a No.
void askFirst(CommandContext& context, const QString& question) {
    if (context.isSet("yes")) return;
    if (!context.console.inputIsTerminal())
        throw CommandFailure(ExitCode::WrongUse,
                             "The standard input is no terminal, so nobody can be asked: --yes is needed.");
    if (!context.console.ask(question)) throw CommandFailure(ExitCode::Refused, "Nothing was changed.");
}

} // namespace

ExitCode listSchedules(CommandContext& context) {
    const QStringList words = filterWords(context.arguments.join(' '));
    QStringList captions{"ID", "Title", "Status", "Due", "Ran", "Contents", "Template", "Project"};
    const bool everybodys = context.session.isAdministrator();
    if (everybodys) captions << "Owner";
    QList<QStringList> rows;
    QJsonArray json;
    for (const SeenSchedule& schedule : seenSchedules(context.session)) {
        QStringList cells = schedule.cells();
        if (everybodys) cells << schedule.row.owner;
        if (!holdsWords(cells.join('\n'), words)) continue;
        if (context.isSet("json"))
            json << schedule.json();
        else
            rows << QStringList(QString::number(schedule.row.id)) + cells;
    }
    context.console.write(context.isSet("json") ? jsonText(QJsonDocument(json)) : tableText(captions, rows));
    return ExitCode::Done;
}

ExitCode showSchedule(CommandContext& context) {
    const SeenSchedule schedule = findSchedule(context.session, context.arguments.first());
    if (context.isSet("wait")) return waitForEnd(context, schedule.row.id);
    tellSchedule(context, schedule);
    return ExitCode::Done;
}

ExitCode showLog(CommandContext& context) {
    const SeenSchedule schedule = findSchedule(context.session, context.arguments.first());
    QList<QStringList> rows;
    QJsonArray json;
    for (const LogEntry& entry : logOf(context.session, schedule)) {
        rows << QStringList{entry.reportName, QString::number(entry.errorCode), entry.description};
        json << QJsonObject{
            {"report", entry.reportName}, {"errorCode", entry.errorCode}, {"description", entry.description}};
    }
    context.console.write(context.isSet("json")
                              ? jsonText(QJsonDocument(json))
                              : tableText({"Schedule Report", "Error Code", "Description"}, rows));
    return ExitCode::Done;
}

ExitCode resetSchedule(CommandContext& context) {
    const SeenSchedule schedule = findSchedule(context.session, context.arguments.first());
    const QString title = quoted(schedule.row.title);
    const CommandFailure notProcessed(
        ExitCode::Refused, QString("The schedule %1 is not being processed; nothing was reset.").arg(title));
    if (schedule.row.status != ScheduleStatus::Processing) throw notProcessed;
    askFirst(context, QString("The schedule %1 is being processed, since %2 at the earliest. Do you want to "
                              "reset it? Do so only when the engine has stopped working on it.")
                          .arg(title, schedule.due()));
    if (!ResetSchedule(context.session, schedule.row.id)) throw notProcessed;
    if (const auto reset = findSchedule(context.session, schedule.row.id)) tellSchedule(context, *reset);
    return ExitCode::Done;
}

ExitCode deleteSchedule(CommandContext& context) {
    const SeenSchedule schedule = findSchedule(context.session, context.arguments.first());
    const QString title = quoted(schedule.row.title);
    askFirst(context, QString("Are you sure you want to delete the schedule %1 ?").arg(title));
    DeleteSchedule(context.session, schedule.row.id);
    context.console.tell(
        QString("The schedule %1 with the ID %2 was deleted.").arg(title, QString::number(schedule.row.id)));
    return ExitCode::Done;
}
