#include "support/TestProgram.h"

#include "app/cLogin.h"
#include "app/openServer.h"
#include "demo/DemoApplication.h"
#include "demo/DemoUser.h"

#include <QFile>
#include <QSettings>
#include <QTest>

namespace {

const QString marker = "SchedulerTests";

ConnectionString realServer() {
    return {qEnvironmentVariable("SCHEDULER_TEST_USER"), qEnvironmentVariable("SCHEDULER_TEST_PASSWORD"), "master",
            qEnvironmentVariable("SCHEDULER_TEST_SERVER")};
}

DemoOptions optionsFor(bool schedulerDatabase) {
    DemoOptions options = DemoOptions::small();
    options.schedulerDatabase = schedulerDatabase;
    options.schedulerContent = schedulerDatabase;
    return options;
}

/// A small server is built once in each process; every test works on a copy.
QString pristineServer(bool schedulerDatabase) {
    static const QTemporaryDir folder;
    const QString path = folder.filePath(schedulerDatabase ? "whole.db" : "bare.db");
    if (!QFile::exists(path)) DemoServer::build(path, optionsFor(schedulerDatabase));
    return path;
}

bool databaseExists(Connection& system, const QString& name) {
    return system.scalar(sql("SELECT COUNT(*) FROM master.dbo.sysdatabases WHERE name = {}", name)).toInt() > 0;
}

Connection& opened(std::unique_ptr<Connection>& connection, const ConnectionString& target) {
    if (!connection) {
        connection = std::make_unique<Connection>(target, openServer);
        connection->open();
    }
    return *connection;
}

} // namespace

TestProgram::TestProgram(bool schedulerDatabase)
    : m_server(onEmbeddedServer() ? "file:" + serverFile() : realServer().dataSource),
      session(m_folder.filePath("app"),
              [this](const ConnectionString& target) {
                  return std::make_unique<FaultyServer>(openServer(target), fault);
              }),
      context{session, messages} {
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_folder.filePath("settings"));
    onEmbeddedServer() ? makeEmbeddedServer(schedulerDatabase) : makeRealServer(schedulerDatabase);
    demoApplication::create(m_folder.filePath("app"));
}

TestProgram::~TestProgram() {
    if (!onEmbeddedServer()) dropDemo();
}

bool TestProgram::onEmbeddedServer() {
    return !qEnvironmentVariableIsSet("SCHEDULER_TEST_SERVER");
}

void TestProgram::makeEmbeddedServer(bool schedulerDatabase) {
    QFile::copy(pristineServer(schedulerDatabase), serverFile());
}

/// What a broken run left is dropped first, but only where the marker says that it was a test's.
void TestProgram::makeRealServer(bool schedulerDatabase) {
    if (databaseExists(system(), marker)) dropDemo();
    system().execute(sql("CREATE DATABASE {}", Name(marker)));
    DemoServer::populate(realServer(), optionsFor(schedulerDatabase));
}

void TestProgram::dropDemo() {
    session.connection.reset();
    m_other.reset();
    system().setDefaultDatabase("master");
    for (const QString& database : DemoServer::databases() << marker)
        if (databaseExists(system(), database)) system().execute(sql("DROP DATABASE {}", Name(database)));
    system().execute(sql("DROP LOGIN {}", Name(Session::serverLoginName)));
}

QString TestProgram::passwordOf(const QString& user) {
    return user == Session::serverLoginName ? DemoServer::loginPassword : DemoUser::password;
}

void TestProgram::logIn(const QString& user) {
    const LoginOutcome outcome = cLogin(session, [] { return false; }).logIn(m_server, user, passwordOf(user));
    QVERIFY2(outcome.result == LoginOutcome::Done, qPrintable(outcome.message));
}

Connection& TestProgram::other() {
    return opened(m_other, {Session::serverLoginName, DemoServer::loginPassword, "NorvaScheduler", m_server});
}

Connection& TestProgram::system() {
    return opened(m_system, onEmbeddedServer() ? ConnectionString{"sa", DemoServer::systemPassword, "master", m_server}
                                               : realServer());
}
