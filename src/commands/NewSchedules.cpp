#include "commands/NewSchedules.h"

#include "base/Session.h"
#include "base/modCommonFunctions.h"
#include "commands/CommandFailure.h"
#include "commands/Projects.h"
#include "commands/Schedules.h"
#include "commands/Waiting.h"
#include "db/DbError.h"
#include "projects/modProjectUpdate.h"
#include "schedules/ScheduleChoices.h"
#include "schedules/clsSchedule.h"
#include "schedules/modScheduler.h"
#include "templates/modTemplates.h"

#include <QRegularExpression>

namespace {

void refuse(const QString& problem) {
    if (!problem.isEmpty()) throw CommandFailure(ExitCode::Refused, problem);
}

WallClock timeOf(const QString& text) {
    static const QRegularExpression form("^\\d{4}-\\d{2}-\\d{2}[T ]\\d{2}:\\d{2}(:\\d{2})?\\z");
    const auto time = form.match(text).hasMatch() ? WallClock::fromStored(text) : std::nullopt;
    if (!time)
        throw CommandFailure(ExitCode::WrongUse,
                             QString("%1 is no date and time such as 2026-12-01T08:00, without a time zone.")
                                 .arg(quoted(text)));
    return *time;
}

/// One of those that the editor would offer for the current project.
std::unique_ptr<clsTemplate> templateOf(Session& session, const QString& name) {
    const CurrentProject& project = session.project;
    QList<Named> all;
    for (const TemplateHeader& header : templatesOfAccount(session, project.unitabAccount))
        all << Named{header.id, header.title};
    const QString none = QString("There is no template %1 for the account %2 of the project %3.")
                             .arg(quoted(name), quoted(project.unitabAccount), quoted(project.database));
    auto found = std::make_unique<clsTemplate>(session.db(), project);
    if (found->LoadTemplate(oneNamed(all, name, "templates", none))) return found;
    throw CommandFailure(ExitCode::NotFound, none); // it went meanwhile
}

/// An older project is made ready for the engine; what takes long is left to the window, which asks first.
void prepareProject(CommandContext& context) {
    addTimeBandColumns(context.session);
    const auto later = [](const QString&) { return false; };
    const auto hearNoStep = [](int, int) {};
    if (!updateTimeBands(context.session, true, later, hearNoStep))
        context.console.tell(
            QString("The project %1 waits for an important one-off update. Saving a schedule "
                    "in the Scheduler's window offers it.")
                .arg(quoted(context.session.project.database)));
}

/// Saves a schedule that is not stored yet, for the current project.
ExitCode save(CommandContext& context, clsSchedule& schedule) {
    Session& session = context.session;
    refuse(scheduleTitleProblem(schedule.Title()));
    refuse(runDateProblem(schedule.RunDate()));
    prepareProject(context);
    if (!readTemplateType(session.db(), schedule.Template().ID()))
        refuse("This template has been deleted by somebody else in the meantime. Please select another one.");
    if (!session.project.isOfAccount(schedule.Template().UnitabAccount()))
        refuse("The template is not of the account of the project. Please select a template");
    refuse(saveProblem(schedule.SaveSchedule({}, false)));
    const int id = schedule.ID();
    context.console.tell(QString("The schedule %1 was added with the ID %2.")
                             .arg(quoted(schedule.Title()), QString::number(id)));
    if (context.isSet("wait")) return waitForEnd(context, id);
    try {
        if (const auto added = findSchedule(session, id)) tellSchedule(context, *added);
    } catch (const DbError& error) { // the schedule stands all the same
        context.console.tell(error.text());
    }
    return ExitCode::Done;
}

} // namespace

ExitCode addSchedule(CommandContext& context) {
    Session& session = context.session;
    const QString templateName = context.needed("template");
    const QString project = context.needed("project");
    const WallClock at = timeOf(context.needed("at"));
    openOfferedProject(session, project);
    clsSchedule schedule(session);
    schedule.setProjectFile(session.project.database);
    schedule.setTemplate(templateOf(session, templateName));
    schedule.setRunDate(at);
    schedule.setTitle(
        context.isSet("title")
            ? context.value("title")
            : freeScheduleTitle(session, cutText(schedule.Template().Title(), clsSchedule::longestTitle)));
    return save(context, schedule);
}

ExitCode runSchedule(CommandContext& context) {
    Session& session = context.session;
    const SeenSchedule former = findSchedule(session, context.arguments.first());
    clsSchedule schedule(session);
    if (schedule.LoadSchedule(former.row.id) != clsSchedule::Loaded)
        refuse(former.row.problem.isEmpty() ? "Error loading schedule information" : former.row.problem);
    openProjectFor(session, schedule.ProjectFile());
    schedule.makeNew(freeScheduleTitle(session, schedule.Title()), WallClock::now());
    return save(context, schedule);
}
