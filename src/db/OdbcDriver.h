#pragma once

#include "db/ConnectionString.h"

#include <QStringList>

/// What the administrator may choose about the way to the server.
struct OdbcSettings {
    QString driver; ///< a registered driver's name or a driver library's path; empty takes the best one
    bool encrypt = true;
    bool trustServerCertificate = false; ///< for Microsoft's driver
    /// For FreeTDS: the server's name is that of a section of freetds.conf, which alone can name the
    /// certificates that are trusted.
    bool freetdsConf = false;
};

/// An ODBC driver and the dialect of connection strings that it understands.
class OdbcDriver {
public:
    explicit OdbcDriver(const QString& name);

    /// The driver that `wanted` names, without regard to case; when it is empty, the newest of
    /// Microsoft's, else FreeTDS. Throws a Refusal when that driver is not among the installed ones.
    static OdbcDriver choose(const QStringList& installed, const QString& wanted);

    const QString& name() const { return m_name; }
    bool isSqlServer() const { return m_kind != Kind::Other; }
    /// Throws a Refusal for a value that this driver cannot be told, without repeating a password.
    QString connectionString(const ConnectionString& target, const OdbcSettings& settings) const;
    /// What the settings ask for and this driver does not do, in words; empty when it does it all.
    QString shortcoming(const OdbcSettings& settings) const;

private:
    enum class Kind { Microsoft, FreeTds, Other };
    QString microsoftString(const ConnectionString& target, const OdbcSettings& settings) const;
    QString freeTdsString(const ConnectionString& target, const OdbcSettings& settings) const;
    QString freeTdsServer(const QString& dataSource, const OdbcSettings& settings) const;
    QString plainString(const ConnectionString& target) const;
    QString plainCredentials(const ConnectionString& target) const;
    QString plain(const QString& value, const QString& meaning) const;

    QString m_name;
    Kind m_kind;
};
