#include "commands/Projects.h"

#include "base/Session.h"
#include "commands/CommandFailure.h"
#include "projects/modProjects.h"
#include "schedules/ScheduleChoices.h"

void openProjectFor(Session& session, const QString& name, ProjectUse use) {
    const QString known =
        session.db().scalar(sql("SELECT [name] FROM master.dbo.sysdatabases WHERE [name] = {}", name));
    const QString database = known.isNull() ? name : known;
    QString problem = projectProblem(session, database);
    if (problem.isEmpty() && use == ProjectUse::Look)
        openProject(session, database);
    else if (problem.isEmpty())
        problem = takeProject(session, database);
    if (!problem.isEmpty()) throw CommandFailure(ExitCode::Refused, problem);
}
