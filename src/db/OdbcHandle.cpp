#include "db/OdbcHandle.h"

#include "db/DbError.h"

#ifdef Q_OS_WIN
#include <windows.h>
#endif
#include <sql.h>
#include <sqlext.h>

static_assert(OdbcHandle::Environment == SQL_HANDLE_ENV && OdbcHandle::Connection == SQL_HANDLE_DBC
              && OdbcHandle::Statement == SQL_HANDLE_STMT);

namespace {

/// "[FreeTDS][SQL Server]Login failed" becomes "Login failed". What follows the server's own mark is
/// the server's text, which may begin with a bracket too.
QString withoutOrigin(QString text) {
    for (qsizetype end; text.startsWith(u'[') && (end = text.indexOf(u']')) > 0;) {
        const bool serverMark = QStringView(text).left(end) == QLatin1StringView("[SQL Server");
        text.remove(0, end + 1);
        if (serverMark) break;
    }
    return text.trimmed();
}

bool readRecord(OdbcHandle::Kind kind, void* handle, SQLSMALLINT record, OdbcDiagnostic& diagnostic) {
    SQLWCHAR state[6] = {};
    SQLWCHAR text[SQL_MAX_MESSAGE_LENGTH * 8] = {};
    SQLINTEGER number = 0;
    SQLSMALLINT length = 0;
    const SQLRETURN code =
        SQLGetDiagRecW(kind, handle, record, state, &number, text, SQLSMALLINT(std::size(text)), &length);
    if (!SQL_SUCCEEDED(code)) return false;
    diagnostic = {QString::fromUtf16(reinterpret_cast<const char16_t*>(state)), int(number),
                  withoutOrigin(QString::fromUtf16(reinterpret_cast<const char16_t*>(text)))};
    return true;
}

} // namespace

OdbcHandle::OdbcHandle(Kind kind, const OdbcHandle* parent) : m_kind(kind) {
    if (SQL_SUCCEEDED(SQLAllocHandle(kind, parent ? parent->get() : SQL_NULL_HANDLE, &m_handle))) {
        if (kind == Environment)
            SQLSetEnvAttr(m_handle, SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), 0);
        return;
    }
    if (!parent) throw DbError(0, "The ODBC driver manager cannot be started.");
    const OdbcDiagnostic why = parent->diagnostic();
    throw DbError(why.number, why.text, {}, why.state.startsWith("08"));
}

OdbcHandle::~OdbcHandle() {
    SQLFreeHandle(m_kind, m_handle);
}

QList<OdbcDiagnostic> OdbcHandle::diagnostics() const {
    QList<OdbcDiagnostic> records;
    OdbcDiagnostic next;
    while (readRecord(m_kind, m_handle, SQLSMALLINT(records.size() + 1), next)) records += next;
    if (records.isEmpty()) records += {{}, 0, "The ODBC driver gave no reason."};
    return records;
}

OdbcDiagnostic OdbcHandle::diagnostic() const {
    const QList<OdbcDiagnostic> records = diagnostics();
    // Messages that a batch printed before it failed may stand in front; they are warnings, class 01.
    for (const OdbcDiagnostic& record : records)
        if (!record.state.startsWith("01")) return record;
    return records.first();
}
