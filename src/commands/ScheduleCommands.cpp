#include "commands/ScheduleCommands.h"

#include "base/FilterWords.h"
#include "base/Session.h"
#include "commands/Schedules.h"
#include "commands/Waiting.h"

#include "commands/TerminalText.h"

#include <QJsonArray>

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
