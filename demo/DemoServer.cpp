#include "demo/DemoServer.h"

#include "app/modCreateDB.h"
#include "app/openServer.h"
#include "base/Session.h"
#include "demo/BulkInsert.h"
#include "demo/CentralDatabases.h"
#include "demo/DemoCentres.h"
#include "demo/DemoProjectDatabase.h"
#include "demo/SchedulerContent.h"
#include "embedded/EmbeddedServer.h"

#include <QFile>
#include <stdexcept>

namespace {

ConnectionString systemLogin(const QString& path) {
    return {"sa", DemoServer::systemPassword, "master", "file:" + path};
}

/// Where the server would put the files of a new database; a real one knows by itself.
void registerFolders(Connection& system) {
    for (const QString value : {"DefaultData", "DefaultLog"})
        system.execute(sql("EXEC master.dbo.xp_regwrite N'HKEY_LOCAL_MACHINE', "
                           "N'SOFTWARE\\Microsoft\\MSSQLServer\\MSSQLServer\\', {}, N'REG_SZ', {}",
                           value, QString("C:\\SQLData\\")));
}

/// The login owns what it creates; here it is kept out of a database of somebody else's.
void createInaccessible(Connection& system, const DemoProject& project, const DemoOptions& options) {
    demoProjectDatabase::create(system, project);
    demoProjectDatabase::fill(system, project, 0, options.now.date());
    const Name login(Session::serverLoginName);
    DefaultDatabase inProject(system, project.database);
    system.execute(sql("CREATE USER {} FOR LOGIN {}", login, login));
    system.execute(sql("DENY CONNECT TO {}", login));
}

void createProjects(Connection& connection, const DemoOptions& options) {
    qsizetype listed = 0;
    for (const DemoProject& project : demoProjects::all()) listed += project.isListed();
    for (const DemoProject& project : demoProjects::all()) {
        if (project.is(DemoProject::Inaccessible)) continue;
        options.tell(QString("Creating the project database \"%1\"…").arg(project.database));
        demoProjectDatabase::create(connection, project);
        Transaction transaction(connection);
        demoProjectDatabase::fill(connection, project,
                                  project.isListed() ? int(options.callRecords / listed) : 0,
                                  options.now.date());
        if (!project.is(DemoProject::WithoutCentres) && !project.is(DemoProject::Archive))
            demoCentres::createMasters(connection, project);
        transaction.commit();
    }
}

/// By the routine that a first login uses.
void createScheduler(Session& session, const DemoOptions& options) {
    session.connection->setDefaultDatabase("NorvaTallymere");
    session.serverDefaults = readServerDefaults(session.db(), session.paths.AppFolder());
    createFromScripts(session, options.tell);
}

void removeServerFile(const QString& path) {
    for (const QString ending : {"", "-wal", "-shm", "-journal"}) QFile::remove(path + ending);
}

} // namespace

DemoOptions DemoOptions::small() {
    DemoOptions options;
    options.callRecords = 250;
    return options;
}

void DemoServer::createLogin(Connection& system) {
    const Name login(Session::serverLoginName);
    system.execute(
        sql("CREATE LOGIN {} WITH PASSWORD = {}, CHECK_POLICY = OFF", login, Secret{loginPassword}));
    for (const char* role : {"dbcreator", "bulkadmin"})
        system.execute(sql("ALTER SERVER ROLE {} ADD MEMBER {}", Name(role), login));
}

void DemoServer::buildEmpty(const QString& path) {
    embedded::EmbeddedServer::create(path, systemPassword);
    Connection master(systemLogin(path), openServer);
    registerFolders(master);
}

void DemoServer::build(const QString& path, const DemoOptions& options) {
    const QString unfinished = path + ".unfinished";
    removeServerFile(unfinished);
    options.tell("Creating the server and its login…");
    buildEmpty(unfinished);
    Connection master(systemLogin(unfinished), openServer);
    createLogin(master);
    master.close();
    populate(systemLogin(unfinished), options);
    if (!QFile::rename(unfinished, path))
        throw std::runtime_error(QString("The file \"%1\" cannot be written.").arg(path).toStdString());
}

void DemoServer::populate(const ConnectionString& system, const DemoOptions& options) {
    Connection master(system, openServer);
    for (const DemoProject& project : demoProjects::all())
        if (project.is(DemoProject::Inaccessible)) createInaccessible(master, project, options);

    Session session(scriptsFolder, openServer);
    session.userName = Session::serverLoginName;
    session.connection = std::make_unique<Connection>(
        ConnectionString{Session::serverLoginName, loginPassword, "master", system.dataSource}, openServer);
    options.tell("Creating the central databases…");
    centralDatabases::create(session.db());
    createProjects(session.db(), options);
    if (!options.schedulerDatabase) return;
    createScheduler(session, options);
    if (!options.schedulerContent) return;
    options.tell("Filling the scheduler database…");
    schedulerContent::fill(session.db(), options.now);
}

QStringList DemoServer::databases() {
    QStringList names = centralDatabases::names();
    for (const DemoProject& project : demoProjects::all()) names << project.database;
    return names << "NorvaScheduler";
}
