#include "commands/Projects.h"

#include "base/Session.h"
#include "commands/CommandFailure.h"
#include "projects/ProjectList.h"
#include "projects/modProjects.h"
#include "schedules/ScheduleChoices.h"

namespace {

/// In the server's own spelling; as it stands where the server has none.
QString databaseOf(Session& session, const QString& name) {
    const QString known =
        session.db().scalar(sql("SELECT [name] FROM master.dbo.sysdatabases WHERE [name] = {}", name));
    return known.isNull() ? name : known;
}

} // namespace

void openOfferedProject(Session& session, const QString& name, ProjectUse use) {
    const QString database = databaseOf(session, name);
    if (projectProblem(session, database).isEmpty() && !isOfferedAsProject(session, database))
        throw CommandFailure(ExitCode::Refused,
                             QString("The database '%1' is not offered as a project: archives and the "
                                     "product's own databases are not.")
                                 .arg(database));
    openProjectFor(session, database, use);
}

void openProjectFor(Session& session, const QString& name, ProjectUse use) {
    const QString database = databaseOf(session, name);
    QString problem = projectProblem(session, database);
    if (problem.isEmpty() && use == ProjectUse::Look)
        openProject(session, database);
    else if (problem.isEmpty())
        problem = takeProject(session, database);
    if (!problem.isEmpty()) throw CommandFailure(ExitCode::Refused, problem);
}
