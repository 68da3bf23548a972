#include "db/OdbcServer.h"

#include "db/OdbcResults.h"
#include "db/wipe.h"

#ifdef Q_OS_WIN
#include <windows.h>
#endif
#include <QScopeGuard>
#include <algorithm>
#include <optional>
#include <sql.h>
#include <sqlext.h>

static_assert(sizeof(SQLWCHAR) == sizeof(QChar));

namespace {

/// ODBC takes texts that it only reads by non-const pointers.
SQLWCHAR* wide(const QString& text) {
    return reinterpret_cast<SQLWCHAR*>(const_cast<ushort*>(text.utf16()));
}

/// ODBC takes numbers where it takes pointers.
SQLPOINTER attribute(SQLULEN value) {
    return reinterpret_cast<SQLPOINTER>(value); // NOLINT(performance-no-int-to-ptr)
}

} // namespace

std::unique_ptr<OdbcServer> OdbcServer::open(const ConnectionString& target, const OdbcSettings& settings) {
    std::unique_ptr<OdbcServer> server(new OdbcServer);
    const OdbcDriver driver = OdbcDriver::choose(server->installedDrivers(), settings.driver);
    QString text = driver.connectionString(target, settings);
    const auto used = qScopeGuard([&] { wipe(text); });
    server->connect(driver, text, target.loginTimeout);
    // Texts such as '2008/04/01' would be read as 4 January for a login whose language puts days first.
    // And another user's lock would be waited for without end.
    if (driver.isSqlServer()) server->execute(sql("SET DATEFORMAT mdy\r\nSET LOCK_TIMEOUT 10000"));
    return server;
}

QString OdbcServer::shortcoming(const OdbcSettings& settings) {
    return OdbcDriver::choose(OdbcServer().installedDrivers(), settings.driver).shortcoming(settings);
}

OdbcServer::OdbcServer()
    : m_environment(OdbcHandle::Environment, nullptr), m_connection(OdbcHandle::Connection, &m_environment) {}

OdbcServer::~OdbcServer() {
    SQLEndTran(SQL_HANDLE_DBC, m_connection.get(), SQL_ROLLBACK); // an open transaction forbids closing
    SQLDisconnect(m_connection.get());
}

QStringList OdbcServer::installedDrivers() const {
    SQLWCHAR name[256];
    SQLWCHAR attributes[2048]; // not wanted, but not every driver manager can do without the place
    SQLSMALLINT nameLength = 0;
    SQLSMALLINT attributesLength = 0;
    QStringList drivers;
    SQLUSMALLINT direction = SQL_FETCH_FIRST;
    while (SQL_SUCCEEDED(SQLDriversW(m_environment.get(), direction, name, SQLSMALLINT(std::size(name)),
                                     &nameLength, attributes, SQLSMALLINT(std::size(attributes)),
                                     &attributesLength))) {
        drivers += QString::fromUtf16(reinterpret_cast<const char16_t*>(name));
        direction = SQL_FETCH_NEXT;
    }
    return drivers;
}

void OdbcServer::connect(const OdbcDriver& driver, const QString& connectionString, int loginTimeout) {
    SQLSetConnectAttrW(m_connection.get(), SQL_ATTR_LOGIN_TIMEOUT, attribute(SQLULEN(loginTimeout)),
                       SQL_IS_UINTEGER);
    const SQLRETURN code = SQLDriverConnectW(m_connection.get(), nullptr, wide(connectionString), SQL_NTS,
                                             nullptr, 0, nullptr, SQL_DRIVER_NOPROMPT);
    if (!SQL_SUCCEEDED(code)) throw connectFailure(driver);
}

Results OdbcServer::execute(const Sql& batch) {
    requireUsable(batch.shown());
    const OdbcHandle statement(OdbcHandle::Statement, &m_connection);
    setRunning(&statement);
    const auto ended = qScopeGuard([this] { setRunning(nullptr); });
    SQLRETURN code = SQLExecDirectW(statement.get(), wide(batch.text()), SQLINTEGER(batch.text().size()));
    if (code == SQL_NO_DATA) code = SQL_SUCCESS; // an UPDATE or DELETE that found no row
    Results results;
    while (code != SQL_NO_DATA) {
        if (!SQL_SUCCEEDED(code) || !readResult(statement, results)) throw failure(statement, batch.shown());
        code = SQLMoreResults(statement.get());
    }
    return results;
}

void OdbcServer::setRunning(const OdbcHandle* statement) {
    const std::lock_guard lock(m_runningMutex);
    m_running = statement;
}

/// The lock keeps the statement's handle alive until the driver has taken the call.
void OdbcServer::cancel() {
    const std::lock_guard lock(m_runningMutex);
    if (m_running) SQLCancel(m_running->get());
}

void OdbcServer::begin() {
    requireUsable();
    if (!setAutocommit(false)) throw failure(m_connection);
}

void OdbcServer::commit() {
    endTransaction(true);
}

void OdbcServer::rollback() {
    endTransaction(false);
}

void OdbcServer::endTransaction(bool keep) {
    std::optional<DbError> error;
    if (!SQL_SUCCEEDED(SQLEndTran(SQL_HANDLE_DBC, m_connection.get(), keep ? SQL_COMMIT : SQL_ROLLBACK))) {
        error = failure(m_connection);
        if (keep) SQLEndTran(SQL_HANDLE_DBC, m_connection.get(), SQL_ROLLBACK);
    }
    m_usable = setAutocommit(true);
    if (error) throw *error;
}

bool OdbcServer::setAutocommit(bool on) {
    return SQL_SUCCEEDED(SQLSetConnectAttrW(m_connection.get(), SQL_ATTR_AUTOCOMMIT,
                                            attribute(on ? SQL_AUTOCOMMIT_ON : SQL_AUTOCOMMIT_OFF),
                                            SQL_IS_UINTEGER));
}

void OdbcServer::requireUsable(const QString& statement) const {
    if (!m_usable) throw DbError(0, "The connection to the server was lost.", statement, true);
}

DbError OdbcServer::connectFailure(const OdbcDriver& driver) const {
    const QList<OdbcDiagnostic> records = m_connection.diagnostics();
    // A database that cannot be opened makes the login fail, which ranks above its own cause.
    for (const OdbcDiagnostic& record : records)
        if (record.number == DbError::CannotOpenDatabase) return DbError(record.number, record.text);
    const OdbcDiagnostic& first = records.first();
    // The driver manager itself complains with a state of class IM, or a bare warning, when the
    // driver's library does not load.
    if (first.state.startsWith("IM") || first.state.startsWith("01"))
        return DbError(first.number,
                       QString("The ODBC driver \"%1\" cannot be used: %2").arg(driver.name(), first.text));
    if (!first.state.startsWith("08") && first.state != "HYT00") return DbError(first.number, first.text);
    // FreeTDS keeps the reason ("Unknown host machine name.") behind a general remark without number.
    const auto withNumber = std::ranges::find_if(records, &OdbcDiagnostic::number);
    const QString reason = withNumber == records.end() ? first.text : withNumber->text;
    const QString hint = driver.isOutdated() ? '\n' + driver.shortcoming({}) : QString();
    return DbError(DbError::Unreachable, reason + hint, {}, true);
}

DbError OdbcServer::failure(const OdbcHandle& handle, const QString& statement) const {
    const OdbcDiagnostic why = handle.diagnostic();
    if (handle.kind() == OdbcHandle::Statement) SQLFreeStmt(handle.get(), SQL_CLOSE);
    // HY000 tells nothing: it stands for ordinary errors as well as for a session that is gone.
    // 08004 with a number is the server that refuses a database, and stays there.
    const bool refused = why.state == "08004" && why.number != 0;
    const bool lost =
        (why.state.startsWith("08") && !refused) || isDead() || (why.state == "HY000" && !answers());
    return DbError(why.number, why.text, statement, lost);
}

bool OdbcServer::isDead() const {
    SQLUINTEGER dead = SQL_CD_FALSE;
    SQLGetConnectAttrW(m_connection.get(), SQL_ATTR_CONNECTION_DEAD, &dead, SQL_IS_UINTEGER, nullptr);
    return dead == SQL_CD_TRUE;
}

bool OdbcServer::answers() const {
    const OdbcHandle statement(OdbcHandle::Statement, &m_connection);
    return SQL_SUCCEEDED(SQLExecDirectW(statement.get(), wide("SELECT 1"), SQL_NTS));
}
