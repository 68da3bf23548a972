#include "support/TestProgram.h"

#include "app/SecurityFile.h"
#include "app/cLogin.h"
#include "app/openServer.h"
#include "demo/DemoUser.h"

#include <QDir>
#include <QFile>
#include <QSettings>
#include <QTest>

namespace {

/// A small server is built once in each process; every test works on a copy.
QString pristineServer(bool schedulerDatabase) {
    static const QTemporaryDir folder;
    const QString path = folder.filePath(schedulerDatabase ? "whole.db" : "bare.db");
    if (!QFile::exists(path)) {
        DemoOptions options = DemoOptions::small();
        options.schedulerDatabase = schedulerDatabase;
        options.schedulerContent = schedulerDatabase;
        DemoServer::build(path, options);
    }
    return path;
}

void makeApplicationFolder(const QDir& folder) {
    folder.mkpath("app");
    QFile product(folder.filePath("app/Quorra Zelvan.exe"));
    product.open(QIODevice::WriteOnly);
    for (const char* script : {"SchDB.sql", "DBOptions.sql"})
        QFile::copy(QDir(DemoServer::scriptsFolder()).filePath(script), folder.filePath(QString("app/") + script));
    WriteEncryptedSSSfile(folder.filePath("app/Zelvan.SSS"), DemoServer::loginPassword);
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
    : m_server("file:" + m_folder.filePath("server.db")),
      session(m_folder.filePath("app"),
              [this](const ConnectionString& target) {
                  return std::make_unique<FaultyServer>(openServer(target), fault);
              }),
      context{session, messages} {
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_folder.filePath("settings"));
    QFile::copy(pristineServer(schedulerDatabase), serverFile());
    makeApplicationFolder(QDir(m_folder.path()));
}

QString TestProgram::passwordOf(const QString& user) {
    return user == Session::serverLoginName ? DemoServer::loginPassword : DemoUser::password;
}

void TestProgram::logIn(const QString& user) {
    const LoginOutcome outcome = cLogin(session, [] { return false; }).logIn(m_server, user, passwordOf(user));
    QVERIFY2(outcome.result == LoginOutcome::Done, qPrintable(outcome.message));
}

Connection& TestProgram::other() {
    return opened(m_other, DemoServer::connectionString(serverFile()));
}

Connection& TestProgram::system() {
    return opened(m_system, {"sa", DemoServer::systemPassword, "master", m_server});
}
