#pragma once

#include "db/DbError.h"

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <variant>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;
struct sqlite3_context;
struct sqlite3_value;

namespace embedded {

/// A value as SQLite holds it; monostate is NULL.
using Value = std::variant<std::monostate, qint64, double, QString>;

inline bool isNull(const Value& value) {
    return std::holds_alternative<std::monostate>(value);
}

/// Of a number.
inline double asReal(const Value& value) {
    const auto* integer = std::get_if<qint64>(&value);
    return integer ? double(*integer) : std::get<double>(value);
}

class SqliteFile;

/// A row that a unique index refused; text() is SQLite's message, which the
/// executor turns into the server's error.
class ConstraintError : public DbError {
public:
    explicit ConstraintError(const QString& message) : DbError(0, message) {}
};

/// The arguments of a function of ours that SQLite calls.
class Arguments {
public:
    Arguments(int count, sqlite3_value** values) : m_count(count), m_values(values) {}
    int count() const { return m_count; }
    bool isNull(int index) const;
    qint64 integer(int index) const;
    double real(int index) const;
    QString text(int index) const;
    Value value(int index) const;

private:
    int m_count;
    sqlite3_value** m_values;
};

/// May throw DbError, which comes out of the statement that called it.
using NativeFunction = std::function<Value(const Arguments&)>;

class SqliteStatement {
public:
    SqliteStatement(SqliteFile& file, sqlite3_stmt* statement) : m_file(&file), m_statement(statement) {}
    SqliteStatement(SqliteStatement&& other) noexcept;
    SqliteStatement& operator=(SqliteStatement&&) = delete;
    ~SqliteStatement();

    bool step(); ///< whether there is a row; throws DbError
    bool isNull(int column) const;
    qint64 integer(int column) const;
    QString text(int column) const; ///< never a null QString for a value that is not NULL
    Value value(int column) const;

private:
    friend class SqliteFile;
    void bind(int place, const Value& value); ///< places count from 1

    SqliteFile* m_file;
    sqlite3_stmt* m_statement;
};

/// The file behind a server, with SQLite's own error codes turned into the server's.
class SqliteFile {
public:
    enum class Mode { Existing, Create };
    /// Throws DbError 20009 for a path that cannot be opened.
    SqliteFile(const QString& path, Mode mode);
    SqliteFile(const SqliteFile&) = delete;
    SqliteFile& operator=(const SqliteFile&) = delete;
    ~SqliteFile();

    /// Whether the system or the disk lets the file only be read.
    bool isReadOnly() const;

    SqliteStatement prepare(const QString& sql, const std::vector<Value>& values = {});
    void run(const QString& sql, const std::vector<Value>& values = {});
    Value scalar(const QString& sql, const std::vector<Value>& values = {});
    /// Changes how columns of tables are declared: part of the text that made them. Their values stay as they
    /// are. For use in a savepoint.
    struct Redeclaration {
        QString table, from, to;
    };
    void redeclare(const std::vector<Redeclaration>& changes);
    void addFunction(const QString& name, int arguments, bool deterministic, NativeFunction function);
    void setLockTimeout(int milliseconds) { m_lockTimeout = milliseconds; }
    /// From any thread: what runs fails soon, and so does what waits for a lock, until resume().
    void cancel();
    void resume() { m_cancelled = false; }
    void requireNotCancelled() const;
    bool inTransaction() const;
    qint64 lastRowId() const;
    qint64 changes() const;
    /// The file was removed or replaced under this session.
    bool isGone() const;
    const QString& path() const { return m_path; }

private:
    friend class SqliteStatement;
    struct Function;
    static int waitForLock(void* file, int attempt);
    static void callFunction(sqlite3_context* context, int count, sqlite3_value** values);
    [[noreturn]] void fail(int code, const QString& message);

    QString m_path;
    sqlite3* m_database = nullptr;
    std::atomic<bool> m_cancelled = false;
    int m_lockTimeout = 0; ///< milliseconds
    std::chrono::steady_clock::time_point m_waitsSince;
    std::optional<DbError> m_raised; ///< by a function of ours inside the running statement
    std::vector<std::unique_ptr<Function>> m_functions;
};

/// "name" for SQLite.
QString sqliteName(const QString& name);
/// 'text' for SQLite.
QString sqliteText(const QString& text);

/// Several changes that happen together, inside or outside a transaction.
class Savepoint {
public:
    explicit Savepoint(SqliteFile& file);
    Savepoint(const Savepoint&) = delete;
    Savepoint& operator=(const Savepoint&) = delete;
    ~Savepoint();
    void release();

private:
    SqliteFile& m_file;
    bool m_outermost;
    bool m_open = true;
};

} // namespace embedded
