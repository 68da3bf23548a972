#include "app/modCreateDB.h"

#include "app/ScriptRunner.h"
#include "base/Session.h"
#include "db/DbError.h"
#include "db/SchedulerDatabase.h"

namespace {

void fill(Session& session, const Sql& options, const QString& tables,
          const std::function<void(const QString&)>& tell) {
    tell("Setting the database options…");
    session.db().execute(options);
    tell("Creating the tables…");
    DefaultDatabase scheduler(session.db(), "NorvaScheduler");
    runScript(session.db(), tables);
}

void dropHalfMade(Session& session) {
    try {
        dropSchedulerDatabase(session.db());
    } catch (const DbError& error) {
        session.log.write("frmCreateDB.DropHalfMade", error);
    }
}

} // namespace

void createFromScripts(Session& session, const std::function<void(const QString& step)>& tell) {
    // Both scripts are read before anything is made: a missing one then leaves the server untouched.
    const Sql options = Sql::script(readScript(session.paths.appFile("DBOptions.sql")));
    const QString tables = session.paths.appFile("SchDB.sql");
    readScript(tables);
    // A database that is there already, but empty, is only filled; it is not ours to drop.
    const bool isNew = !schedulerDatabaseExists(session.db());
    if (isNew) {
        tell("Creating the database…");
        createSchedulerDatabase(session.db(), session.serverDefaults);
    }
    try {
        fill(session, options, tables, tell);
    } catch (...) {
        if (isNew) dropHalfMade(session);
        throw;
    }
}
