#pragma once

#include "db/SchedulerDatabase.h"

#include <QString>
#include <functional>

struct Session;

/// What a login attempt came to.
struct LoginOutcome {
    enum Result {
        Done,
        Stay,       ///< show the message, stay on the login screen
        EndProgram, ///< show the message, then end
    };
    enum Field { NoField, Server, UserName, Password };

    Result result = Done;
    QString message;
    Field focus = NoField;
    QString details; ///< what the administrator needs to know, below the message
};

/// Logs a user in: checks what was typed, opens the shared connection, checks the server and the
/// user, brings the scheduler database up to date and fills the session's values.
class cLogin {
public:
    /// `createDatabase` is called when NorvaScheduler is not there, or has no tables; it answers
    /// whether the database is there now (when not, it has told the user and the program ends).
    cLogin(Session& session, std::function<bool()> createDatabase,
           OrphanedNumbers orphans = OrphanedNumbers::Purge);

    /// Never throws; a failing statement is written to the error log and comes back as Stay.
    LoginOutcome logIn(const QString& server, const QString& userName, const QString& password);

private:
    void connectAndCheck(const QString& server, const QString& userName, const QString& password);
    void checkUser(const QString& userName, const QString& password);
    void prepareSchedulerDatabase();
    bool openSchedulerDatabase();
    void checkDatabases();

    Session& m_session;
    std::function<bool()> m_createDatabase;
    OrphanedNumbers m_orphans;
};

/// Keeps user and server for the next login on this desk.
void rememberLogin(const Session& session);
/// The server that the last successful login of this desktop user named; empty when there was none.
QString lastServer();
/// The user who logged in last on this desk; empty when nobody did.
QString lastUser();
