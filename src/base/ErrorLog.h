#pragma once

#include <QString>

class DbError;

/// The user's error log, a file of comma-separated records in the application folder. A log that
/// cannot be written is given up silently: reporting must never stop the work that it reports on.
class ErrorLog {
public:
    void setFolder(const QString& folder) { m_folder = folder; }
    /// Part of the file name; empty before the login.
    void setUserName(const QString& userName) { m_userName = userName; }

    /// One record. Number 0 writes the context alone (a plain progress line); negative numbers and
    /// those of exhausted memory, disk or device are marked fatal.
    void write(const QString& context, int number = 0, const QString& description = {}) const;

    /// A failure of the database with its statement; one without a number of its own counts as 1.
    void write(const QString& context, const DbError& error) const;

    QString path() const { return file("ZelvanSchedulerError.log"); }
    QString backupPath() const { return file("ZelvanSchedulerError.bak"); }

    /// A file of this user in the folder: the name behind the user's.
    QString file(const QString& name) const;

private:
    void rollOver() const;

    QString m_folder;
    QString m_userName;
};
