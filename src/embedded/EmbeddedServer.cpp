#include "embedded/EmbeddedServer.h"

#include "embedded/Errors.h"
#include "embedded/Executor.h"
#include "embedded/Security.h"

#include <QFileInfo>

namespace embedded {

namespace {

constexpr int defaultLockTimeout = 10000;

QString pathOf(const QString& dataSource) {
    return dataSource.startsWith("file:", Qt::CaseInsensitive) ? dataSource.mid(5) : dataSource;
}

void prepareSession(SqliteFile& file) {
    file.setLockTimeout(defaultLockTimeout);
    file.run("PRAGMA synchronous = NORMAL");
    file.run("PRAGMA temp_store = MEMORY");
}

DbError noServer(const QString& path, const QString& reason) {
    return DbError(DbError::Unreachable, QString("The server file \"%1\" %2.").arg(path, reason), {}, true);
}

void requireReachable(const QString& path) {
    const QFileInfo file(path);
    if (file.isDir()) throw noServer(path, "is a folder");
    // Of what lies in a folder that may not be entered, the system says the same as of what is not there.
    const QFileInfo folder(file.absolutePath());
    if (folder.isDir() && !folder.isExecutable())
        throw noServer(path, "lies in a folder that you may not enter");
    if (!file.isFile()) throw noServer(path, "does not exist");
}

} // namespace

EmbeddedServer::EmbeddedServer(std::unique_ptr<Session> session)
    : m_session(std::move(session)), m_executor(std::make_unique<Executor>(*m_session)) {}

EmbeddedServer::~EmbeddedServer() = default;

std::unique_ptr<EmbeddedServer> EmbeddedServer::open(const ConnectionString& connectionString) {
    const QString path = pathOf(connectionString.dataSource);
    requireReachable(path);
    auto session = std::make_unique<Session>(path);
    prepareSession(session->file);
    if (!Catalog::isServerFile(session->file)) throw noServer(path, "is no server file");
    if (session->file.isReadOnly())
        throw noServer(path, "can be read but not written, which every session has to");
    session->catalog.upgrade();
    const QString ownDefault = security::logIn(*session, connectionString.userId, connectionString.password);
    session->catalog.refresh();
    const QString wanted =
        connectionString.initialCatalog.isEmpty() ? ownDefault : connectionString.initialCatalog;
    if (!wanted.isEmpty()) {
        const Database* database = session->catalog.database(wanted);
        if (!database || !session->canEnter(*database))
            throw serverError(DbError::CannotOpenDatabase,
                              "Cannot open database \"%1\" requested by the login. The login failed.",
                              wanted);
        session->enter(database->id);
    }
    return std::unique_ptr<EmbeddedServer>(new EmbeddedServer(std::move(session)));
}

void EmbeddedServer::create(const QString& path, const QString& saPassword) {
    if (QFileInfo::exists(path)) throw serverError(0, "The file \"%1\" exists already.", path);
    SqliteFile file(path, SqliteFile::Mode::Create);
    prepareSession(file);
    Catalog::createIn(file);
    security::addAdministrator(file, "sa", saPassword);
}

Results EmbeddedServer::execute(const Sql& batch) {
    try {
        requireFile();
        return m_executor->run(batch.text());
    } catch (const DbError& error) {
        throw DbError(error.number(), error.text(), batch.shown(), error.connectionLost());
    }
}

void EmbeddedServer::requireFile() const {
    if (m_session->file.isGone()) throw noServer(m_session->file.path(), "is gone");
}

void EmbeddedServer::cancel() {
    m_session->file.cancel();
}

void EmbeddedServer::begin() {
    m_session->file.resume();
    requireFile();
    m_executor->beginTransaction();
}

void EmbeddedServer::commit() {
    m_session->file.resume();
    requireFile();
    m_executor->commitTransaction();
}

void EmbeddedServer::rollback() {
    m_session->file.resume();
    if (m_session->transactionDepth > 0) m_executor->rollbackTransaction();
}

void EmbeddedServer::setLockTimeout(int milliseconds) {
    m_session->file.setLockTimeout(milliseconds);
}

} // namespace embedded
