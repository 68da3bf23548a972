#pragma once

#include "db/ConnectionString.h"

#include <QStringList>

/// What the administrator may choose about the way to the server.
struct OdbcSettings {
    QString driver = {}; ///< a registered driver's name or a driver library's path; empty takes the best one
    enum Encryption { No, Yes, Strict };
    Encryption encrypt = Yes; ///< Strict: from the first byte, with Microsoft's version 18 and later
    // For Microsoft's driver:
    bool trustServerCertificate = false;
    QString hostNameInCertificate = {}; ///< where it is not the server's
    QString serverCertificate = {};     ///< the file of the one that is expected
    /// For FreeTDS: the server's name is that of a section of freetds.conf, which alone can name the
    /// certificates that are trusted.
    bool freetdsConf = false;
};

/// An ODBC driver and the dialect of connection strings that it understands.
class OdbcDriver {
public:
    explicit OdbcDriver(const QString& name);

    /// The driver that `wanted` names, without regard to case; when it is empty, the newest of
    /// Microsoft's, else FreeTDS, else what Windows brings along. Throws a Refusal when that driver is not
    /// among the installed ones.
    static OdbcDriver choose(const QStringList& installed, const QString& wanted);

    const QString& name() const { return m_name; }
    bool isSqlServer() const { return m_kind != Kind::Other; }
    bool isOutdated() const { return m_kind == Kind::OfWindows; }
    /// Throws a Refusal for a value that this driver cannot be told, without repeating a password.
    QString connectionString(const ConnectionString& target, const OdbcSettings& settings) const;
    /// What the settings ask for and this driver does not do, in words; empty when it does it all.
    QString shortcoming(const OdbcSettings& settings) const;

private:
    enum class Kind {
        Microsoft,
        FreeTds,
        OfWindows, ///< "SQL Server", which every Windows has, and which is older than what servers ask for
        Other
    };
    QString microsoftString(const ConnectionString& target, const OdbcSettings& settings) const;
    QString freeTdsString(const ConnectionString& target, const OdbcSettings& settings) const;
    QString ofWindowsString(const ConnectionString& target, const OdbcSettings& settings) const;
    QString freeTdsServer(const QString& dataSource, const OdbcSettings& settings) const;
    QString plainString(const ConnectionString& target) const;
    QString plainCredentials(const ConnectionString& target) const;
    QString plain(const QString& value, const QString& meaning) const;

    QString m_name;
    Kind m_kind;
};
