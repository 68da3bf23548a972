#pragma once

#include <QString>

class DbError;

/// The user's error log, a file of comma-separated records in the application folder; where he cannot write
/// there, in a folder of his own. A log that cannot be written at all is given up silently: reporting must
/// never stop the work that it reports on.
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

    QString path() const;
    QString backupPath() const; ///< beside the log

    /// A file of this user in the folder that takes it: the name behind the user's.
    QString file(const QString& name) const;
    /// Whether the application folder does not take the log.
    bool isElsewhere() const;

private:
    QString inFolder(const QString& folder, const QString& name) const;
    void rollOver(const QString& path) const;

    QString m_folder;
    QString m_userName;
};
