#pragma once

#include "base/WallClock.h"
#include "db/ConnectionString.h"

#include <functional>

class Connection;

/// How much a demo server holds.
struct DemoOptions {
    int callRecords = 10'000;         ///< over all projects
    bool schedulerDatabase = true;    ///< false leaves NorvaScheduler to the first login
    bool schedulerContent = true;     ///< templates, schedules, logs, addresses and options
    WallClock now = WallClock::now(); ///< what the run dates lie around
    std::function<void(const QString& step)> tell = [](const QString&) {};

    /// Enough of everything for a test, made in a moment.
    static DemoOptions small();
};

/// Makes the server that the demo and the tests run on: users, central databases, projects of every
/// kind, and the scheduler database, made by the program's own routine and filled.
class DemoServer {
public:
    static constexpr auto systemPassword = "demo-system-password"; ///< of "sa" on the embedded server
    static constexpr auto loginPassword = "demo-admin-password";   ///< of QuorraAdmin
    /// Holds "SchDB.sql" and "DBOptions.sql", inside the program.
    static constexpr auto scriptsFolder = ":/scripts";

    /// Makes an embedded server file without the demo. Throws DbError.
    static void buildEmpty(const QString& path);
    /// Makes a new embedded server file, whole or not at all. Throws DbError or std::runtime_error.
    static void build(const QString& path, const DemoOptions& options);
    /// The login QuorraAdmin with its roles. Throws DbError.
    static void createLogin(Connection& system);
    /// Fills a server that has this login; `system` names it and a login that may do everything.
    /// Databases of the demo must not exist yet. Throws DbError.
    static void populate(const ConnectionString& system, const DemoOptions& options);

    /// All that populate() may make.
    static QStringList databases();
};
