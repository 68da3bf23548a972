#pragma once

#include "db/ConnectionString.h"

#include <QStringList>

/// What the administrator may choose about the way to the server.
struct OdbcSettings {
    QString driver; ///< a registered driver's name or a driver library's path; empty takes the best one
    /// These two are for Microsoft's driver; FreeTDS takes them from its own freetds.conf.
    bool encrypt = true;
    bool trustServerCertificate = false;
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

private:
    enum class Kind { Microsoft, FreeTds, Other };
    QString microsoftString(const ConnectionString& target, const OdbcSettings& settings) const;
    QString freeTdsString(const ConnectionString& target) const;
    QString plainString(const ConnectionString& target) const;
    QString plainCredentials(const ConnectionString& target) const;
    QString plain(const QString& value, const QString& meaning) const;

    QString m_name;
    Kind m_kind;
};
