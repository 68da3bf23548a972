#pragma once

#include "db/ConnectionString.h"
#include "db/Server.h"

#include <memory>

namespace embedded {

class Executor;
struct Session;

/// A session on the embedded server: one SQLite file that plays a whole server with its databases,
/// logins, roles and registry. Several sessions, of several programs, may share the file.
class EmbeddedServer : public ::Server {
public:
    /// Opens the server that the data source "file:<path>" names. Throws DbError: 20009 when there is
    /// no such server file, 18456 for a wrong login, 4060 for a default database that cannot be opened.
    static std::unique_ptr<EmbeddedServer> open(const ConnectionString& connectionString);
    /// Makes a new server file with the system databases and the login "sa". Throws DbError when the
    /// file exists or cannot be written.
    static void create(const QString& path, const QString& saPassword);

    ~EmbeddedServer() override;
    Results execute(const Sql& batch) override;
    void begin() override;
    void commit() override;
    void rollback() override;
    void cancel() override;

    /// How long a statement waits for other sessions' locks before it fails with 1222; 10 s at first.
    void setLockTimeout(int milliseconds);

private:
    explicit EmbeddedServer(std::unique_ptr<Session> session);
    void requireFile() const;

    std::unique_ptr<Session> m_session;
    std::unique_ptr<Executor> m_executor;
};

} // namespace embedded
