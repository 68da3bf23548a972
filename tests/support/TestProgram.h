#pragma once

#include "base/Session.h"
#include "demo/DemoServer.h"
#include "demo/GuestDemo.h"
#include "support/FaultyServer.h"
#include "support/ScriptedMessages.h"
#include "ui/EventLoopWaiter.h"
#include "ui/ScreenContext.h"

#include <QTemporaryDir>

/// The program on a demo server of its own, with its application folder, a user's settings apart from
/// the tester's, and messages answered by a script. The server is an embedded one, or the one that
/// SCHEDULER_TEST_SERVER names: there the demo is a guest for each test.
class TestProgram {
public:
    /// With `schedulerDatabase` false, NorvaScheduler is left to the first login.
    explicit TestProgram(bool schedulerDatabase = true);

    /// False on a real server, whose files no test may touch.
    static bool onEmbeddedServer();

    /// Through the program's own login; fails the test when it does not succeed.
    void logIn(const QString& user = Session::serverLoginName);
    static QString passwordOf(const QString& user);

    const QString& server() const { return m_server; } ///< as a user would type it
    QString serverFile() const { return m_folder.filePath("server.db"); }
    QString appFile(const QString& name) const { return m_folder.filePath("app/" + name); }
    /// A connection beside the program's, to look at the rows and to play another user.
    Connection& other();
    /// The same as the server's system login, which may do everything.
    Connection& system();
    /// False on a server whose login QuorraAdmin is not the test's to change.
    bool ownsLogin() const { return !m_guest || m_guest->ownsLogin(); }
    /// A new database of the login's, which goes with the demo.
    void addDatabase(const QString& name);

    EventLoopWaiter waiter;
    Fault fault; ///< arms failures of the program's connection
    ScriptedMessages messages;

private:
    QTemporaryDir m_folder;
    QString m_server;
    std::unique_ptr<GuestDemo> m_guest; ///< null on an embedded server; outlives the connections
    std::unique_ptr<Connection> m_other;
    std::unique_ptr<Connection> m_system;

public:
    Session session;
    ScreenContext context;
};
