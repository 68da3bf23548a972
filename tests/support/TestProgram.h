#pragma once

#include "app/Session.h"
#include "demo/DemoServer.h"
#include "support/FaultyServer.h"
#include "support/ScriptedMessages.h"
#include "ui/ScreenContext.h"

#include <QTemporaryDir>

/// The program on a demo server of its own, with its application folder, a user's settings apart from
/// the tester's, and messages answered by a script. The server is an embedded one, or the real one that
/// SCHEDULER_TEST_SERVER (with SCHEDULER_TEST_USER and SCHEDULER_TEST_PASSWORD) names: there the demo's
/// databases are made for each test and dropped after it.
class TestProgram {
public:
    /// With `schedulerDatabase` false, NorvaScheduler is left to the first login.
    explicit TestProgram(bool schedulerDatabase = true);
    ~TestProgram();

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

    Fault fault; ///< arms failures of the program's connection
    ScriptedMessages messages;

private:
    void makeEmbeddedServer(bool schedulerDatabase);
    void makeRealServer(bool schedulerDatabase);
    void dropDemo();

    QTemporaryDir m_folder;
    QString m_server;
    std::unique_ptr<Connection> m_other;
    std::unique_ptr<Connection> m_system;

public:
    Session session;
    ScreenContext context;
};
