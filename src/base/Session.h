#pragma once

#include "base/CurrentProject.h"
#include "base/ErrorLog.h"
#include "base/cPathControl.h"
#include "db/Connection.h"
#include "db/ServerDefaults.h"

#include <QStringList>
#include <memory>

/// The options that hold for every user of the server (tblOptions).
struct GlobalOptions {
    QString outputPath; ///< as the server sees it
    bool excel = false; ///< outputs that a new report gets
    bool csv = false;
};

/// What a user of the product may do. Levels 2 and 3 are the analysis product's own.
enum class UserLevel { Administrator = 1, Restricted = 4, Refused = 5 };

/// Whom the next log entry of modScheduler is about.
struct LogSubject {
    int LogScheduleID = -1;
    int LogReportID = -1;
    QString LogReportName;
};

/// The values of one run of the program, set at start-up and login and read everywhere after. There
/// is one, owned by the start-up and handed to those who need it.
struct Session {
    /// The server login through which the program always connects, whoever the user is.
    static constexpr auto serverLoginName = "QuorraAdmin";

    explicit Session(const QString& appFolder, Connection::Opener serverOpener)
        : paths(appFolder), opener(std::move(serverOpener)) {
        log.setFolder(appFolder);
    }

    bool isAdministrator() const { return userName == serverLoginName; }
    /// The shared connection; throws a Refusal before a login.
    Connection& db() const;
    /// For the steps of long work, see Waiter::turn().
    void turn() const {
        if (waiter) waiter->turn();
    }

    cPathControl paths;
    ErrorLog log;
    QString displayFont = "Calibri";
    bool dropDatabase = false;

    Connection::Opener opener;
    Waiter* waiter = nullptr; ///< of a program with windows; outlives the session
    std::unique_ptr<Connection> connection;
    QString serverName; ///< not empty: a login has succeeded
    QString userName;
    UserLevel userLevel{};                 ///< none before a login
    int multiLevel = 0;                    ///< of a restricted user
    QStringList costCentres{5, QString()}; ///< levels 1 to 5 to which a restricted user is kept

    ServerDefaults serverDefaults;
    GlobalOptions options;
    CurrentProject project;
    /// Numbers that the user excluded for a template that is not saved yet: nobody else's.
    QStringList newExclusions;
    QStringList leftOutProjects; ///< those of which the user was told
    LogSubject logSubject;
    bool diagnostics = false; ///< the log view tells the keys behind a log entry
};
