#pragma once

#include <QString>
#include <stdexcept>

/// The one exception of the database layer. `number` is the server's own error number (0 when the
/// failure has none), `statement` the batch that failed with its secrets masked.
class DbError : public std::runtime_error {
public:
    /// Numbers that the program tests; they are SQL Server's, or the driver's where noted.
    enum Number {
        InvalidColumn = 207,
        InvalidObject = 208,
        NoSuchDatabase = 911,
        Deadlock = 1205,
        LockTimeout = 1222,
        DuplicateColumn = 2705,
        AlreadyExists = 2714,
        NoSuchProcedure = 2812,
        CannotDrop = 3701,
        CannotOpenDatabase = 4060,
        TextTooLong = 8152,
        TextTooLongNamed = 2628,
        LoginFailed = 18456,
        Unreachable = 20009, ///< driver: no server answers under that name
        Stopped = 100'000,   ///< no server's: the user did not want to wait any longer
        StoppedCommit,       ///< the same in the middle of a commit, whose outcome nobody knows
    };

    DbError(int number, const QString& text, const QString& statement = {}, bool connectionLost = false);

    /// What a request throws that the user has stopped.
    static DbError stopped(const QString& statement = {}, bool connectionLost = false);

    int number() const { return m_number; }
    const QString& text() const { return m_text; }
    const QString& statement() const { return m_statement; }
    /// True when the connection itself is gone: nothing works on it until it is opened again.
    bool connectionLost() const { return m_connectionLost; }
    bool isDatabaseMissing() const { return m_number == NoSuchDatabase || m_number == CannotOpenDatabase; }

private:
    int m_number;
    QString m_text;
    QString m_statement;
    bool m_connectionLost;
};
