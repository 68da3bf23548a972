#include "support/TestProgram.h"

#include "app/cLogin.h"
#include "app/openServer.h"
#include "base/SettingsStore.h"
#include "demo/DemoApplication.h"
#include "demo/DemoUser.h"

#include <QFile>
#include <QTest>

namespace {

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

Connection& opened(std::unique_ptr<Connection>& connection, const ConnectionString& target) {
    if (!connection) {
        connection = std::make_unique<Connection>(target, openServer);
        connection->open();
    }
    return *connection;
}

} // namespace

TestProgram::TestProgram(bool schedulerDatabase)
    : m_server(onEmbeddedServer() ? "file:" + serverFile() : GuestDemo::host().dataSource),
      session(m_folder.filePath("app"),
              [this](const ConnectionString& target) {
                  return std::make_unique<FaultyServer>(openServer(target), fault);
              }),
      context{session, messages} {
    session.waiter = &waiter;
    keepSettingsIn(m_folder.filePath("settings"));
    if (onEmbeddedServer()) {
        QFile::copy(pristineServer(schedulerDatabase), serverFile());
    } else {
        saveSetting("NorvaQuorraSQL", "Odbc", "TrustServerCertificate",
                    "yes"); // servers for tests sign their own
        m_guest = std::make_unique<GuestDemo>(optionsFor(schedulerDatabase));
    }
    demoApplication::create(m_folder.filePath("app"));
}

bool TestProgram::onEmbeddedServer() {
    return !GuestDemo::isInvited();
}

void TestProgram::addDatabase(const QString& name) {
    if (m_guest) m_guest->announceDatabase(name);
    other().execute(sql("CREATE DATABASE {}", Name(name)));
}

QString TestProgram::passwordOf(const QString& user) {
    return user == Session::serverLoginName ? DemoServer::loginPassword : DemoUser::password;
}

void TestProgram::logIn(const QString& user) {
    const LoginOutcome outcome =
        cLogin(session, [] { return false; }).logIn(m_server, user, passwordOf(user));
    QVERIFY2(outcome.result == LoginOutcome::Done, qPrintable(outcome.message));
}

Connection& TestProgram::other() {
    return opened(m_other, {Session::serverLoginName, DemoServer::loginPassword, "NorvaScheduler", m_server});
}

Connection& TestProgram::system() {
    return opened(m_system, onEmbeddedServer()
                                ? ConnectionString{"sa", DemoServer::systemPassword, "master", m_server}
                                : GuestDemo::host());
}
