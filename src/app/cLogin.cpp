#include "app/cLogin.h"

#include "app/SecurityFile.h"
#include "app/openServer.h"
#include "base/Session.h"
#include "base/SettingsStore.h"
#include "db/DbError.h"
#include "db/Refusal.h"
#include "db/SchedulerDatabase.h"
#include "db/ServerText.h"

namespace {

const QString invalidLogin = "Invalid Login.  Please check details entered and try again.";
const QString nothingStored = "99";

/// A check that failed: thrown to leave the sequence of checks at once.
struct FailedCheck {
    LoginOutcome outcome;
};

[[noreturn]] void stay(const QString& message, LoginOutcome::Field focus = LoginOutcome::NoField,
                       const QString& details = {}) {
    throw FailedCheck{{LoginOutcome::Stay, message, focus, details}};
}

[[noreturn]] void endProgram(const QString& message) {
    throw FailedCheck{{LoginOutcome::EndProgram, message, LoginOutcome::NoField, {}}};
}

void checkTyped(const QString& server, const QString& userName, const QString& password) {
    if (userName.isEmpty()) stay("You must enter a username.", LoginOutcome::UserName);
    if (userName.contains(' '))
        stay("The Username is invalid.  Usernames cannot contain spaces.  Please try another.",
             LoginOutcome::UserName);
    if (password.isEmpty()) stay("You must enter a password.", LoginOutcome::Password);
    if (server.isEmpty()) stay("You must enter a Server name.", LoginOutcome::Server);
}

void checkAdministrator(const QString& password, const QString& loginPassword) {
    if (password.size() < 10)
        stay("The QuorraAdmin password must be greater than 10 characters long.  Please contact your "
             "Administrator.",
             LoginOutcome::Password);
    if (password.compare(loginPassword, Qt::CaseInsensitive) != 0) stay(invalidLogin);
}

void checkRole(const RecordSet& members, const QString& words) {
    for (const Row row : members)
        if (sameOnServer(row.text("MemberName"), Session::serverLoginName)) return;
    endProgram(
        QString("The QuorraAdmin login is not a member of the %1 role.  Please contact your Administrator.")
            .arg(words));
}

/// What the user reads of a failure of the server: the likely reason first, then the server's words.
QString wordsFor(const DbError& error, const QString& server) {
    if (error.number() == DbError::LoginFailed)
        return QString(
                   "The server '%1' refused the Scheduler's own login.  Please contact your Administrator.")
            .arg(server);
    if (error.number() == DbError::Unreachable)
        return QString("The server '%1' cannot be reached.  Please check the name and try again.\n\n%2")
            .arg(server, error.text());
    return "The login failed: " + error.text();
}

} // namespace

cLogin::cLogin(Session& session, std::function<bool()> createDatabase, OrphanedNumbers orphans)
    : m_session(session), m_createDatabase(std::move(createDatabase)), m_orphans(orphans) {}

LoginOutcome cLogin::logIn(const QString& server, const QString& userName, const QString& password) {
    try {
        checkTyped(server, userName, password);
        m_session.userName = userName;
        m_session.log.setUserName(userName);
        connectAndCheck(server, userName, password);
        prepareSchedulerDatabase();
        checkDatabases();
        if (const QString missing = missingProtection(server); !missing.isEmpty())
            m_session.log.write(missing); // a box would come with every login
    } catch (const FailedCheck& check) {
        m_session.connection.reset();
        return check.outcome;
    } catch (const Refusal& refusal) {
        m_session.connection.reset();
        m_session.log.write("frmLogin.cmdOk_Click", 1, refusal.text());
        return {LoginOutcome::Stay, "The login failed: " + refusal.text(), LoginOutcome::NoField, {}};
    } catch (const DbError& error) {
        m_session.connection.reset();
        if (error.number() == DbError::Stopped) return {LoginOutcome::Stay, {}, LoginOutcome::NoField, {}};
        m_session.log.write("frmLogin.cmdOk_Click", error);
        return {LoginOutcome::Stay, wordsFor(error, server), LoginOutcome::NoField, {}};
    }
    m_session.serverName = server;
    return {};
}

void cLogin::connectAndCheck(const QString& server, const QString& userName, const QString& password) {
    QString reason;
    const auto loginPassword =
        ReadPasswordFromEncryptedSSSfile(m_session.paths.appFile(SecurityFileName), &reason);
    if (!loginPassword)
        stay("The Security file is invalid.  Please contact your Administrator.", LoginOutcome::NoField,
             reason);
    if (m_session.isAdministrator()) checkAdministrator(password, *loginPassword);

    m_session.connection = std::make_unique<Connection>(
        ConnectionString{Session::serverLoginName, *loginPassword, "NorvaTallymere", server},
        m_session.opener, m_session.waiter);
    m_session.connection->open();
    const std::vector<RecordSet> roles =
        m_session.db().queryAll({sql("exec sp_helpsrvrolemember @srvrolename = {}", QString("dbcreator")),
                                 sql("exec sp_helpsrvrolemember @srvrolename = {}", QString("bulkadmin"))});
    checkRole(roles[0], "Database Creator");
    checkRole(roles[1], "Bulk Insert Administrators");
    checkUser(userName, password);
    if (m_session.db().query(sql("SELECT * FROM [TblSQLSettings]")).isEmpty())
        endProgram("No SQL settings have been setup on the server. Please contact your administrator.  "
                   "The program can not continue.");
}

void cLogin::checkUser(const QString& userName, const QString& password) {
    m_session.multiLevel = 0;
    m_session.costCentres = QStringList(5, QString());
    if (m_session.isAdministrator()) {
        m_session.userLevel = UserLevel::Administrator;
        return;
    }
    const RecordSet users = m_session.db().query(sql(
        "SELECT * FROM [TblUsers] WHERE [Username] = {} AND [Password] = {}", userName, Secret{password}));
    if (users.isEmpty()) stay(invalidLogin, LoginOutcome::Password);
    const Row user = users.row(0);
    m_session.userLevel = UserLevel(user.integer("UserLevel"));
    if (m_session.userLevel == UserLevel::Refused)
        endProgram("Level 5 users are not premitted to run this application.");
    if (m_session.userLevel != UserLevel::Restricted) return;
    m_session.multiLevel = user.integer("MultiLevel");
    m_session.costCentres = {user.text("Costcentre1"), user.text("Costcentre2"), user.text("Costcentre3"),
                             user.text("Costcentre4"), user.text("Costcentre5")};
}

void cLogin::prepareSchedulerDatabase() {
    m_session.serverDefaults = readServerDefaults(m_session.db(), m_session.paths.AppFolder());
    if (!m_session.serverDefaults.problem.isEmpty())
        m_session.log.write("spGetDefaults", 1, m_session.serverDefaults.problem);
    if (!openSchedulerDatabase()) {
        if (!m_createDatabase()) endProgram({});
        m_session.db().setDefaultDatabase("NorvaScheduler");
    }
    upgradeAtLogin(m_session.db(), m_orphans);
}

/// False when the database is not there, or is empty because its creation broke off.
bool cLogin::openSchedulerDatabase() {
    try {
        m_session.db().setDefaultDatabase("NorvaScheduler");
    } catch (const DbError& error) {
        if (!error.isDatabaseMissing()) throw;
        return false;
    }
    return schedulerTablesExist(m_session.db());
}

void cLogin::checkDatabases() {
    const QStringList databases{"QXCcts",  "QXSpNum",   "NorvaTallymere", "CostCentres",
                                "TrendDB", "InterSite", "NorvaScheduler"};
    QList<Sql> uses;
    for (const QString& database : databases) uses << sql("USE {}", Name(database));
    try {
        return m_session.db().execute(Sql::join(uses, sql("\r\n")));
    } catch (const DbError& error) {
        if (error.connectionLost() || error.number() == DbError::Stopped) throw;
    }
    for (const QString& database : databases) m_session.db().setDefaultDatabase(database); // which one it is
}

void rememberLogin(const Session& session) {
    saveSetting("VWT", "Login", "User", session.userName);
    if (const QString problem = saveSetting("NorvaQuorraSQL", "Settings", "Server", session.serverName);
        !problem.isEmpty())
        session.log.write("frmLogin.cmdOk_Click", 1, "Settings cannot be kept: " + problem);
}

QString lastUser() {
    return getSetting("VWT", "Login", "User", "");
}

QString lastServer() {
    const QString server = getSetting("NorvaQuorraSQL", "Settings", "Server", nothingStored);
    return server == nothingStored ? QString() : server;
}
