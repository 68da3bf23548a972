#include "demo/GuestDemo.h"

#include "app/openServer.h"
#include "base/Session.h"
#include "db/DbError.h"
#include "demo/DemoServer.h"

#include <QDebug>
#include <stdexcept>

namespace {

constexpr auto notes = "SchedulerTests";

bool databaseExists(Connection& host, const QString& name) {
    return host.scalar(sql("SELECT COUNT(*) FROM master.dbo.sysdatabases WHERE name = {}", name)).toInt() > 0;
}

bool loginExists(Connection& host, const QString& name) {
    return host.scalar(sql("SELECT COUNT(*) FROM master.dbo.syslogins WHERE name = {}", name)).toInt() > 0;
}

[[noreturn]] void refuse(const QString& words) {
    throw std::runtime_error(words.toStdString());
}

void requireFree(Connection& host, const QString& database) {
    if (databaseExists(host, database))
        refuse(QString("The server has a database \"%1\", which the demo does not replace.").arg(database));
}

} // namespace

ConnectionString GuestDemo::host() {
    return {qEnvironmentVariable("SCHEDULER_TEST_USER"), qEnvironmentVariable("SCHEDULER_TEST_PASSWORD"),
            "master", qEnvironmentVariable("SCHEDULER_TEST_SERVER")};
}

GuestDemo::GuestDemo(const DemoOptions& options) : m_host(host(), openServer) {
    dropAll(); // what a run that broke off has left
    for (const QString& database : DemoServer::databases()) requireFree(m_host, database);
    m_host.execute(sql("CREATE DATABASE {}", Name(notes)));
    try {
        m_host.execute(sql("CREATE TABLE {}.dbo.Made (Kind varchar(10), [Name] nvarchar(128))", Name(notes)));
        provideLogin();
        for (const QString& database : DemoServer::databases()) announceDatabase(database);
        DemoServer::populate(host(), options);
    } catch (const std::exception&) {
        dropAll();
        throw;
    }
}

GuestDemo::~GuestDemo() {
    try {
        dropAll();
    } catch (const DbError& error) {
        qWarning("The demo's databases stay until the next run: %s", qPrintable(error.text()));
    }
}

void GuestDemo::announceDatabase(const QString& name) {
    requireFree(m_host, name);
    note("database", name);
}

/// The server's own login is used, and outlives the demo.
void GuestDemo::provideLogin() {
    const QString login = Session::serverLoginName;
    if (!loginExists(m_host, login)) {
        DemoServer::createLogin(m_host);
        note("login", login);
        m_ownsLogin = true;
        return;
    }
    try {
        Connection(ConnectionString{login, DemoServer::loginPassword, "master", host().dataSource},
                   openServer)
            .open();
    } catch (const DbError& error) {
        if (error.number() != DbError::LoginFailed) throw;
        refuse(QString("The server's login %1 has another password than the demo's, \"%2\".")
                   .arg(login, DemoServer::loginPassword));
    }
}

void GuestDemo::note(const QString& kind, const QString& name) {
    m_host.execute(sql("INSERT INTO {}.dbo.Made (Kind, [Name]) VALUES ({}, {})", Name(notes), kind, name));
}

/// The notes go last, so that a run that breaks off in here is no harm either.
void GuestDemo::dropAll() {
    if (!databaseExists(m_host, notes)) return;
    const bool written = !m_host.scalar(sql("SELECT object_id({})", QString(notes) + ".dbo.Made")).isEmpty();
    const RecordSet made =
        written ? m_host.query(sql("SELECT Kind, [Name] FROM {}.dbo.Made ORDER BY Kind", Name(notes)))
                : RecordSet();
    for (const Row row : made) { // databases before the login that owns them
        const QString name = row.text("Name");
        if (row.text("Kind") == "login") {
            if (loginExists(m_host, name)) m_host.execute(sql("DROP LOGIN {}", Name(name)));
        } else if (databaseExists(m_host, name)) {
            m_host.execute(sql("DROP DATABASE {}", Name(name)));
        }
    }
    m_host.execute(sql("DROP DATABASE {}", Name(notes)));
}
