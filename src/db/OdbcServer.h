#pragma once

#include "db/DbError.h"
#include "db/OdbcDriver.h"
#include "db/OdbcHandle.h"
#include "db/Server.h"

#include <memory>
#include <mutex>

/// A session on a SQL Server through whichever ODBC driver is installed. Statements are executed
/// directly, without time limit, and read whole, every value as text.
class OdbcServer : public Server {
public:
    /// Throws DbError: with the server's number for a refused login or database, Unreachable (and
    /// connectionLost) when nobody answers, 0 for a driver that is missing or cannot be told a value.
    static std::unique_ptr<OdbcServer> open(const ConnectionString& target,
                                            const OdbcSettings& settings = {});
    /// See OdbcDriver::shortcoming().
    static QString shortcoming(const OdbcSettings& settings);
    ~OdbcServer() override;

    Results execute(const Sql& batch) override;
    void begin() override;
    void commit() override;
    void rollback() override;
    void cancel() override;

private:
    OdbcServer();
    void connect(const OdbcDriver& driver, const QString& connectionString, int loginTimeout);
    QStringList installedDrivers() const;
    void endTransaction(bool keep);
    bool setAutocommit(bool on);
    void setRunning(const OdbcHandle* statement);
    void requireUsable(const QString& statement = {}) const;
    bool isDead() const;
    bool answers() const;
    DbError connectFailure(const OdbcDriver& driver) const;
    DbError failure(const OdbcHandle& handle, const QString& statement = {}) const;

    OdbcHandle m_environment;
    OdbcHandle m_connection;
    /// False when the driver would not return to autocommit: whatever ran then would wait for a
    /// commit that never comes.
    bool m_usable = true;
    std::mutex m_runningMutex;
    const OdbcHandle* m_running = nullptr; ///< the statement that is executed
};
