#pragma once

#include "db/Connection.h"

struct DemoOptions;

/// The demo as a guest on somebody else's server, as long as this object lives. What was there before is
/// not touched: whatever is made is noted in a database of its own and dropped by these notes, by the next
/// guest at the latest. One guest at a time.
class GuestDemo {
public:
    /// The server that SCHEDULER_TEST_SERVER names, and the login in SCHEDULER_TEST_USER and
    /// SCHEDULER_TEST_PASSWORD, which may do everything there.
    static ConnectionString host();
    static bool isInvited() { return !host().dataSource.isEmpty(); }

    /// Throws DbError, or std::runtime_error where the server holds what the demo would have to replace.
    explicit GuestDemo(const DemoOptions& options);
    GuestDemo(const GuestDemo&) = delete;
    /// Every other connection to the demo's databases must be closed.
    ~GuestDemo();

    /// Before a further database is made: it is dropped with the others. Throws as the constructor does.
    void announceDatabase(const QString& name);
    /// False where the login QuorraAdmin was there before; then nobody may change it.
    bool ownsLogin() const { return m_ownsLogin; }

private:
    void provideLogin();
    void note(const QString& kind, const QString& name);
    void dropAll();

    Connection m_host;
    bool m_ownsLogin = false;
};
