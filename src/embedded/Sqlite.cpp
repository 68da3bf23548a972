#include "embedded/Sqlite.h"

#include "embedded/Collation.h"
#include "embedded/Errors.h"

#include <sqlite3.h>

#include <QFile>
#include <algorithm>
#include <thread>

namespace embedded {

namespace {

QString textOf(const void* characters, int bytes) {
    return bytes == 0 ? QString("") : QString::fromUtf8(static_cast<const char*>(characters), bytes);
}

Value valueOf(sqlite3_value* value) {
    switch (sqlite3_value_type(value)) {
    case SQLITE_INTEGER:
        return qint64(sqlite3_value_int64(value));
    case SQLITE_FLOAT:
        return sqlite3_value_double(value);
    case SQLITE_TEXT: {
        const auto* text = sqlite3_value_text(value);
        return textOf(text, sqlite3_value_bytes(value));
    }
    case SQLITE_BLOB: { // in files of earlier builds
        const auto* blob = static_cast<const char*>(sqlite3_value_blob(value));
        return QString::fromLatin1(QByteArray(blob, sqlite3_value_bytes(value)).toHex().toUpper());
    }
    default:
        return {};
    }
}

int compareTexts(void*, int sizeA, const void* a, int sizeB, const void* b) {
    return collation::compare(QByteArrayView(static_cast<const char*>(a), sizeA),
                              QByteArrayView(static_cast<const char*>(b), sizeB));
}

bool losesConnection(int code) {
    switch (code & 0xff) {
    case SQLITE_IOERR:
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
    case SQLITE_CANTOPEN:
    case SQLITE_READONLY:
        return true;
    default:
        return false;
    }
}

/// SQLite's own words do not tell why the system refused, and call what is damaged or no database
/// "malformed".
QString reasonOf(sqlite3* database, int code, const QString& message) {
    switch (code & 0xff) {
    case SQLITE_NOTADB:
        return "it is no server file, or its beginning is damaged";
    case SQLITE_CORRUPT:
        return "it is damaged (" + message + ')';
    case SQLITE_CANTOPEN:
    case SQLITE_IOERR:
        if (const int why = sqlite3_system_errno(database)) return message + ": " + qt_error_string(why);
        return message;
    default:
        return message;
    }
}

} // namespace

struct SqliteFile::Function {
    SqliteFile* file;
    NativeFunction call;
};

bool Arguments::isNull(int index) const {
    return sqlite3_value_type(m_values[index]) == SQLITE_NULL;
}
qint64 Arguments::integer(int index) const {
    return sqlite3_value_int64(m_values[index]);
}
double Arguments::real(int index) const {
    return sqlite3_value_double(m_values[index]);
}
Value Arguments::value(int index) const {
    return valueOf(m_values[index]);
}
QString Arguments::text(int index) const {
    const auto* text = sqlite3_value_text(m_values[index]);
    return textOf(text, sqlite3_value_bytes(m_values[index]));
}

SqliteStatement::SqliteStatement(SqliteStatement&& other) noexcept
    : m_file(other.m_file), m_statement(std::exchange(other.m_statement, nullptr)) {}

SqliteStatement::~SqliteStatement() {
    sqlite3_finalize(m_statement);
}

void SqliteStatement::bind(int place, const Value& value) {
    if (const auto* integer = std::get_if<qint64>(&value))
        sqlite3_bind_int64(m_statement, place, *integer);
    else if (const auto* real = std::get_if<double>(&value))
        sqlite3_bind_double(m_statement, place, *real);
    else if (const auto* text = std::get_if<QString>(&value)) {
        const QByteArray utf8 = text->toUtf8();
        sqlite3_bind_text(m_statement, place, utf8.constData(), int(utf8.size()), SQLITE_TRANSIENT);
    } else {
        sqlite3_bind_null(m_statement, place);
    }
}

bool SqliteStatement::step() {
    m_file->m_raised.reset();
    const int code = sqlite3_step(m_statement);
    if (code == SQLITE_ROW) return true;
    if (code == SQLITE_DONE) return false;
    const int detail = sqlite3_extended_errcode(m_file->m_database);
    const QString message = QString::fromUtf8(sqlite3_errmsg(m_file->m_database));
    sqlite3_reset(m_statement); // ends the statement's own transaction, so that its lock is given back
    m_file->fail(detail, message);
}

bool SqliteStatement::isNull(int column) const {
    return sqlite3_column_type(m_statement, column) == SQLITE_NULL;
}
qint64 SqliteStatement::integer(int column) const {
    return sqlite3_column_int64(m_statement, column);
}
Value SqliteStatement::value(int column) const {
    return valueOf(sqlite3_column_value(m_statement, column));
}
QString SqliteStatement::text(int column) const {
    const auto* text = sqlite3_column_text(m_statement, column);
    return textOf(text, sqlite3_column_bytes(m_statement, column));
}

SqliteFile::SqliteFile(const QString& path, Mode mode) : m_path(path) {
    const int flags =
        SQLITE_OPEN_READWRITE | (mode == Mode::Create ? SQLITE_OPEN_CREATE : 0) | SQLITE_OPEN_NOMUTEX;
    const int code = sqlite3_open_v2(path.toUtf8().constData(), &m_database, flags, nullptr);
    if (code != SQLITE_OK) {
        const QString reason = reasonOf(m_database, code, QString::fromUtf8(sqlite3_errmsg(m_database)));
        sqlite3_close(m_database);
        throw DbError(DbError::Unreachable,
                      QString("The server file \"%1\" cannot be opened: %2.").arg(path, reason), {}, true);
    }
    sqlite3_extended_result_codes(m_database, 1);
    sqlite3_busy_handler(m_database, waitForLock, this);
    sqlite3_create_collation_v2(m_database, "T", SQLITE_UTF8, nullptr, compareTexts, nullptr);
}

SqliteFile::~SqliteFile() {
    sqlite3_close_v2(m_database);
}

bool SqliteFile::isReadOnly() const {
    return sqlite3_db_readonly(m_database, "main") == 1;
}

void SqliteFile::fail(int code, const QString& message) {
    if (m_raised) {
        const DbError raised = *m_raised;
        m_raised.reset();
        throw raised;
    }
    if (message == "parser stack overflow" || message.startsWith("Expression tree is too large"))
        throw nestedTooDeeply();
    switch (code & 0xff) {
    case SQLITE_INTERRUPT:
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        requireNotCancelled();
        throw DbError(DbError::LockTimeout, "Lock request time out period exceeded.");
    case SQLITE_CONSTRAINT:
        throw ConstraintError(message);
    case SQLITE_FULL:
        throw DbError(1105, "Could not allocate space: the disk is full.");
    default:
        throw DbError(
            losesConnection(code) ? int(DbError::Unreachable) : 0,
            QString("The server file \"%1\" failed: %2").arg(m_path, reasonOf(m_database, code, message)), {},
            losesConnection(code));
    }
}

SqliteStatement SqliteFile::prepare(const QString& sql, const std::vector<Value>& values) {
    m_raised.reset();
    const QByteArray utf8 = sql.toUtf8();
    sqlite3_stmt* prepared = nullptr;
    const int code = sqlite3_prepare_v2(m_database, utf8.constData(), int(utf8.size()), &prepared, nullptr);
    if (code != SQLITE_OK) fail(code, QString::fromUtf8(sqlite3_errmsg(m_database)));
    SqliteStatement statement(*this, prepared);
    for (std::size_t i = 0; i < values.size(); ++i) statement.bind(int(i) + 1, values[i]);
    return statement;
}

void SqliteFile::run(const QString& sql, const std::vector<Value>& values) {
    SqliteStatement statement = prepare(sql, values);
    while (statement.step()) continue;
}

Value SqliteFile::scalar(const QString& sql, const std::vector<Value>& values) {
    SqliteStatement statement = prepare(sql, values);
    return statement.step() ? statement.value(0) : Value();
}

void SqliteFile::redeclare(const std::vector<Redeclaration>& changes) {
    run("PRAGMA writable_schema = ON");
    const auto off =
        qScopeGuard([this] { sqlite3_exec(m_database, "PRAGMA writable_schema = RESET", {}, {}, {}); });
    for (const auto& [table, from, to] : changes)
        run("UPDATE sqlite_schema SET sql = replace(sql, ?2, ?3) WHERE type = 'table' AND name = ?1",
            {table, from, to});
    // All sessions read the tables anew at another version.
    const qint64 version = std::get<qint64>(scalar("PRAGMA schema_version"));
    run(QString("PRAGMA schema_version = %1").arg(version + 1));
}

void SqliteFile::addFunction(const QString& name, int arguments, bool deterministic,
                             NativeFunction function) {
    m_functions.push_back(std::make_unique<Function>(Function{this, std::move(function)}));
    sqlite3_create_function_v2(m_database, name.toUtf8().constData(), arguments,
                               SQLITE_UTF8 | (deterministic ? SQLITE_DETERMINISTIC : 0) | SQLITE_INNOCUOUS,
                               m_functions.back().get(), &SqliteFile::callFunction, nullptr, nullptr,
                               nullptr);
}

void SqliteFile::callFunction(sqlite3_context* context, int count, sqlite3_value** values) {
    const auto* function = static_cast<Function*>(sqlite3_user_data(context));
    try {
        const Value result = function->call(Arguments(count, values));
        if (const auto* integer = std::get_if<qint64>(&result))
            sqlite3_result_int64(context, *integer);
        else if (const auto* real = std::get_if<double>(&result))
            sqlite3_result_double(context, *real);
        else if (const auto* text = std::get_if<QString>(&result)) {
            const QByteArray utf8 = text->toUtf8();
            sqlite3_result_text(context, utf8.constData(), int(utf8.size()), SQLITE_TRANSIENT);
        } else {
            sqlite3_result_null(context);
        }
    } catch (const DbError& error) {
        function->file->m_raised = error;
        sqlite3_result_error(context, error.text().toUtf8().constData(), -1);
    }
}

/// SQLite's own way of waiting cannot be cancelled.
int SqliteFile::waitForLock(void* file, int attempt) {
    using namespace std::chrono;
    auto& self = *static_cast<SqliteFile*>(file);
    const auto now = steady_clock::now();
    if (attempt == 0) self.m_waitsSince = now;
    if (self.m_cancelled || now - self.m_waitsSince >= milliseconds(self.m_lockTimeout)) return 0;
    std::this_thread::sleep_for(milliseconds(std::min(1 + attempt, 50)));
    return 1;
}

void SqliteFile::cancel() {
    m_cancelled = true;
    sqlite3_interrupt(m_database);
}

void SqliteFile::requireNotCancelled() const {
    if (m_cancelled) throw DbError(0, "Operation cancelled by user.");
}

bool SqliteFile::inTransaction() const {
    return !sqlite3_get_autocommit(m_database);
}
qint64 SqliteFile::lastRowId() const {
    return sqlite3_last_insert_rowid(m_database);
}
qint64 SqliteFile::changes() const {
    return sqlite3_changes64(m_database);
}

bool SqliteFile::isGone() const {
    int moved = 0;
    const int code = sqlite3_file_control(m_database, "main", SQLITE_FCNTL_HAS_MOVED, &moved);
    return code == SQLITE_OK && moved != 0;
}

QString sqliteName(const QString& name) {
    return '"' + QString(name).replace(u'"', "\"\"") + '"';
}

QString sqliteText(const QString& text) {
    return '\'' + QString(text).replace(u'\'', "''") + '\'';
}

Savepoint::Savepoint(SqliteFile& file) : m_file(file), m_outermost(!file.inTransaction()) {
    m_file.run(m_outermost ? "BEGIN IMMEDIATE" : "SAVEPOINT together");
}

Savepoint::~Savepoint() {
    if (!m_open) return;
    try {
        if (m_outermost) {
            if (m_file.inTransaction()) m_file.run("ROLLBACK");
        } else {
            m_file.run("ROLLBACK TO together");
            m_file.run("RELEASE together");
        }
    } catch (const DbError&) {
        // The session is lost with its file; what it had open is undone with it.
    }
}

void Savepoint::release() {
    m_file.run(m_outermost ? "COMMIT" : "RELEASE together");
    m_open = false;
}

} // namespace embedded
