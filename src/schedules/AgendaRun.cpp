#include "schedules/AgendaRun.h"

#include "base/FilterWords.h"
#include "base/modCommonFunctions.h"
#include "schedules/modScheduler.h"

#include <algorithm>

namespace {

QString statusOf(const ScheduleListRow& schedule, const RunWatch& watch, const Moment& now) {
    if (schedule.status == ScheduleStatus::Pending) return dueText(schedule.date, now.wall);
    const QString text = statusText(schedule.status);
    const std::optional<Moment> since = watch.runningSince(schedule.id);
    const qint64 running = since ? since->secsTo(now) : 0;
    return running > 60 ? text + " (" + durationText(running, false) + ')' : text;
}

void measure(AgendaRun& run, const RunWatch& watch, const Moment& now) {
    const std::optional<qint64> usual = watch.usualLength(run.schedule.templateId);
    run.watched = watch.count(run.schedule.templateId);
    const auto is = [&](qint64 seconds, AgendaRun::Length length) {
        run.seconds = std::max<qint64>(seconds, 1);
        run.length = length;
    };
    if (run.schedule.status == ScheduleStatus::Pending) {
        if (usual) is(*usual, AgendaRun::Estimated);
    } else if (run.schedule.status == ScheduleStatus::Processing) {
        const std::optional<Moment> since = watch.runningSince(run.id());
        if (!since) return;
        run.start = since->wall;
        const qint64 soFar = since->secsTo(now);
        usual&&* usual > soFar ? is(*usual, AgendaRun::Estimated) : is(soFar, AgendaRun::SoFar);
    } else if (const auto seen = watch.seen(run.id())) {
        run.start = seen->begin;
        is(seen->seconds, AgendaRun::Watched);
    }
}

} // namespace

std::optional<AgendaRun> agendaRun(const ScheduleListRow& schedule, const RunWatch& watch,
                                   const Moment& now) {
    if (!schedule.date || schedule.date->isZeroDate()) return {};
    AgendaRun run{schedule, *schedule.date};
    run.delayed = schedule.isDelayed(now.wall);
    measure(run, watch, now);
    run.status = statusOf(schedule, watch, now);
    return run;
}

QString AgendaRun::lengthText() const {
    const QString duration = seconds < 60 ? durationText(seconds, true) : durationText(seconds, false);
    switch (length) {
    case Estimated:
        return "about " + duration;
    case SoFar:
        return duration + " so far";
    case Watched:
        return duration;
    default:
        return "not known";
    }
}

QString AgendaRun::description() const {
    const bool finished = isFinished(schedule.status);
    const WallClock stored = schedule.date.value_or(start);
    QStringList lines{schedule.title, status, (finished ? "Ran: " : "Due to run: ") + stored.shown()};
    if (start != stored) lines << "Seen to begin: " + start.shown();
    QString lengthLine = "Length: " + lengthText();
    if (length == Estimated)
        lengthLine += watched == 1 ? QString(", an estimate from one run of its template")
                                   : QString(", an estimate from %1 runs of its template").arg(watched);
    lines << lengthLine << "Template: " + schedule.templateTitle << "Project: " + schedule.project;
    if (!schedule.problem.isEmpty()) lines << schedule.problem;
    return lines.join('\n');
}

bool AgendaRun::holds(const QStringList& words) const {
    if (words.isEmpty()) return true;
    return holdsWords(QStringList{schedule.title, status, schedule.shownDate, schedule.contents,
                                  schedule.templateTitle, schedule.project, schedule.owner}
                          .join('\n'),
                      words);
}
