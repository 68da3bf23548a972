#include "db/OdbcDriver.h"

#include "db/Refusal.h"
#include "db/ServerAddress.h"

#include <QFileInfo>
#include <QRegularExpression>

namespace {

constexpr int DefaultPort = 1433;

bool mentions(const QString& name, const char* word) {
    return name.contains(QLatin1StringView(word), Qt::CaseInsensitive);
}

constexpr auto ofWindows = "SQL Server";

QString yesNo(bool flag) {
    return flag ? "yes" : "no";
}

QString braced(const QString& value) {
    return u'{' + QString(value).replace(u'}', "}}") + u'}';
}

QString newestOfMicrosoft(const QStringList& installed) {
    static const QRegularExpression pattern("^ODBC Driver (\\d+) for SQL Server$");
    QString newest;
    int newestVersion = 0;
    for (const QString& name : installed) {
        const int version = pattern.match(name).captured(1).toInt();
        if (version <= newestVersion) continue;
        newest = name;
        newestVersion = version;
    }
    return newest;
}

QString firstFreeTds(const QStringList& installed) {
    for (const QString& name : installed)
        if (mentions(name, "FreeTDS")) return name;
    return {};
}

/// As Microsoft's drivers take it. A port already tells which instance is meant; asking the server's browser
/// service for it as well would only be one more thing that can fail.
QString serverOf(const ServerAddress& address) {
    if (address.port) return address.host + ',' + QString::number(address.port);
    return address.instance.isEmpty() ? address.host : address.host + '\\' + address.instance;
}

} // namespace

OdbcDriver::OdbcDriver(const QString& name) : m_name(name), m_kind(Kind::Other) {
    if (mentions(name, "FreeTDS") || mentions(name, "tdsodbc"))
        m_kind = Kind::FreeTds;
    else if (name.compare(ofWindows, Qt::CaseInsensitive) == 0)
        m_kind = Kind::OfWindows;
    else if (mentions(name, "SQL Server") || mentions(name, "msodbcsql"))
        m_kind = Kind::Microsoft;
}

OdbcDriver OdbcDriver::choose(const QStringList& installed, const QString& wanted) {
    if (wanted.isEmpty()) {
        QString best = newestOfMicrosoft(installed);
        if (best.isEmpty()) best = firstFreeTds(installed);
        if (best.isEmpty() && installed.contains(ofWindows)) best = ofWindows;
        if (best.isEmpty())
            throw Refusal("No ODBC driver for SQL Server is installed. Please install Microsoft's "
                          "\"ODBC Driver 18 for SQL Server\" or FreeTDS.");
        return OdbcDriver(best);
    }
    if (QFileInfo(wanted).isAbsolute()) return OdbcDriver(wanted);
    for (const QString& name : installed)
        if (name.compare(wanted, Qt::CaseInsensitive) == 0) return OdbcDriver(name);
    const QString others = installed.isEmpty() ? "none" : installed.join(", ");
    throw Refusal(QString("The ODBC driver \"%1\" is not installed. Installed: %2.").arg(wanted, others));
}

QString OdbcDriver::connectionString(const ConnectionString& target, const OdbcSettings& settings) const {
    const QString dialect = m_kind == Kind::Microsoft   ? microsoftString(target, settings)
                            : m_kind == Kind::FreeTds   ? freeTdsString(target, settings)
                            : m_kind == Kind::OfWindows ? ofWindowsString(target, settings)
                                                        : plainString(target);
    return "DRIVER=" + braced(m_name) + u';' + dialect;
}

QString OdbcDriver::shortcoming(const OdbcSettings& settings) const {
    if (m_kind == Kind::Other)
        return QString(
                   "The ODBC driver \"%1\" is not told to encrypt the connection or to check the server's "
                   "certificate.")
            .arg(m_name);
    if (m_kind == Kind::OfWindows)
        return "The ODBC driver \"SQL Server\" of Windows is out of date: servers that ask for TLS 1.2 or "
               "later, "
               "or whose certificate no known authority signed, refuse it. Please install Microsoft's \"ODBC "
               "Driver 18 for SQL Server\".";
    if (m_kind == Kind::Microsoft || settings.encrypt == OdbcSettings::No || settings.trustServerCertificate
        || settings.freetdsConf)
        return {};
    return QString(
               "The connection is encrypted, but the ODBC driver \"%1\" checks the server's certificate only "
               "when freetds.conf names it (see the setting FreetdsConf).")
        .arg(m_name);
}

QString OdbcDriver::microsoftString(const ConnectionString& target, const OdbcSettings& settings) const {
    const QString server = serverOf(ServerAddress::parse(plain(target.dataSource, "server name")));
    const QString encrypt =
        settings.encrypt == OdbcSettings::Strict ? "strict" : yesNo(settings.encrypt == OdbcSettings::Yes);
    QString certificate;
    if (!settings.hostNameInCertificate.isEmpty())
        certificate += ";HostNameInCertificate=" + braced(settings.hostNameInCertificate);
    if (!settings.serverCertificate.isEmpty())
        certificate += ";ServerCertificate=" + braced(settings.serverCertificate);
    return "SERVER=" + server + ";Encrypt=" + encrypt + ";TrustServerCertificate="
           + yesNo(settings.trustServerCertificate) + certificate + ";UID=" + braced(target.userId)
           + ";PWD=" + braced(target.password) + ";DATABASE=" + braced(target.initialCatalog);
}

/// It knows no setting for the certificate.
QString OdbcDriver::ofWindowsString(const ConnectionString& target, const OdbcSettings& settings) const {
    return "SERVER=" + serverOf(ServerAddress::parse(plain(target.dataSource, "server name")))
           + ";Encrypt=" + yesNo(settings.encrypt != OdbcSettings::No) + u';' + plainCredentials(target);
}

QString OdbcDriver::freeTdsServer(const QString& dataSource, const OdbcSettings& settings) const {
    if (settings.freetdsConf) return "SERVERNAME=" + plain(dataSource.trimmed(), "server name");
    const ServerAddress address = ServerAddress::parse(plain(dataSource, "server name"));
    QString server = "SERVER=" + address.host;
    if (address.instance.isEmpty() || address.port)
        server += ";PORT=" + QString::number(address.port ? address.port : DefaultPort);
    else
        server += '\\' + address.instance;
    return server;
}

QString OdbcDriver::freeTdsString(const ConnectionString& target, const OdbcSettings& settings) const {
    // With "request", as with Microsoft's driver and Encrypt=no, the login alone is encrypted, where the
    // server can do that; "off" would send the password as good as readable.
    return freeTdsServer(target.dataSource, settings)
           + ";Encryption=" + (settings.encrypt == OdbcSettings::No ? "request" : "require")
           + ";TDS_Version=7.4;ClientCharset=UTF-8;" + plainCredentials(target);
}

QString OdbcDriver::plainString(const ConnectionString& target) const {
    return "SERVER=" + plain(target.dataSource, "server name") + u';' + plainCredentials(target);
}

QString OdbcDriver::plainCredentials(const ConnectionString& target) const {
    return "UID=" + plain(target.userId, "user name") + ";PWD=" + plain(target.password, "password")
           + ";DATABASE=" + plain(target.initialCatalog, "database name");
}

QString OdbcDriver::plain(const QString& value, const QString& meaning) const {
    static const QRegularExpression impassable("[;{}]");
    if (value.contains(impassable))
        throw Refusal(QString("The %1 holds one of the characters ; { }, which cannot be given to the ODBC "
                              "driver \"%2\".")
                          .arg(meaning, m_name));
    return value;
}
