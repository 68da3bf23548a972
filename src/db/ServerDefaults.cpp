#include "db/ServerDefaults.h"

#include "db/Connection.h"
#include "db/DbError.h"
#include "db/ForeignText.h"
#include "db/Refusal.h"

#include <QDir>
#include <QFile>

namespace {

/// A folder of the server, whose separator need not be this machine's.
QString withSeparator(const QString& folder) {
    if (folder.isEmpty() || folder.endsWith('\\') || folder.endsWith('/')) return folder;
    return folder + (folder.contains('/') ? '/' : '\\');
}

void readIni(const QString& path, ServerDefaults& defaults) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw Refusal(
            QString("\"%1\" cannot be read: %2.").arg(QDir::toNativeSeparators(path), file.errorString()));
    for (const QString& line : foreignLines(file.readAll())) {
        const QString key = line.section('=', 0, 0).trimmed().toUpper();
        const QString value = line.section('=', 1).trimmed();
        if (key == "DATA") defaults.dataFolder = value;
        if (key == "LOG") defaults.logFolder = value;
        if (key == "DATAEXTENSION" && !value.isEmpty()) defaults.dataExtension = value;
        if (key == "LOGEXTENSION" && !value.isEmpty()) defaults.logExtension = value;
    }
}

/// The text of spGetDefaults: four places of the registry, each asked when those before were silent.
Sql createGetDefaults(const QString& value) {
    const Sql read =
        sql("EXEC master.dbo.xp_regread N'HKEY_LOCAL_MACHINE', @reg, {}, @Value OUTPUT\r\n", value);
    Sql text = sql("CREATE PROCEDURE spGetDefaults (\r\n"
                   " @value varchar(1000) OUTPUT\r\n"
                   ") AS \r\n"
                   "declare @inst nvarchar(200)\r\n"
                   "declare @reg nvarchar(500)\r\n"
                   "set @reg = N'SOFTWARE\\Microsoft\\MSSQLServer\\MSSQLServer\\'\r\n");
    text += read;
    text += sql(
        "if (@Value is null)\r\nbegin\r\n"
        "set @reg = N'SOFTWARE\\Microsoft\\Microsoft SQL Server\\GENERAL\\MSSQLServer'\r\n{}end\r\n"
        "if (@Value is null)\r\nbegin\r\n"
        "set @inst = isnull(convert(nvarchar(200), serverproperty(N'InstanceName')), N'GENERAL')\r\n"
        "set @reg = N'SOFTWARE\\Microsoft\\Microsoft SQL Server\\' + @inst + N'\\MSSQLServer'\r\n{}end\r\n"
        "if (@Value is null)\r\nbegin\r\n"
        "EXEC master.dbo.xp_regread N'HKEY_LOCAL_MACHINE', "
        "N'SOFTWARE\\Microsoft\\Microsoft SQL Server\\Instance Names\\SQL', N'MSSQLSERVER', @inst OUTPUT\r\n"
        "set @reg = N'SOFTWARE\\Microsoft\\Microsoft SQL Server\\' + @inst + N'\\MSSQLServer'\r\n{}end\r\n",
        read, read, read);
    return text;
}

/// In one transaction: another login would put the procedure for the other folder in its place.
QString readRegistry(Connection& connection, const QString& value) {
    Transaction transaction(connection);
    connection.execute(sql(
        "If Exists(Select Name from sysobjects Where Name = 'spGetDefaults') Drop Procedure spGetDefaults"));
    connection.execute(createGetDefaults(value));
    const QString folder = connection.scalar(sql("declare @folder varchar(1000)\r\n"
                                                 "exec spGetDefaults @folder OUTPUT\r\n"
                                                 "select @folder"));
    transaction.commit();
    return folder;
}

QString askServer(Connection& connection, const QString& registryValue, const QString& property,
                  QString& problem) {
    QString folder;
    try {
        try {
            folder = readRegistry(connection, registryValue);
        } catch (const DbError& error) {
            if (error.number() != DbError::AlreadyExists)
                throw; // else another login was first: its turn is over now
            folder = readRegistry(connection, registryValue);
        }
    } catch (const DbError& error) {
        if (error.connectionLost()) throw;
        problem = error.text(); // a server without the registry procedures says so in its own way
    }
    return folder.isEmpty()
               ? connection.scalar(sql("SELECT CONVERT(nvarchar(1000), SERVERPROPERTY({}))", property))
               : folder;
}

} // namespace

ServerDefaults readServerDefaults(Connection& connection, const QString& appFolder) {
    ServerDefaults defaults;
    const QString ini = QDir(appFolder).filePath("DefaultPaths.ini");
    if (QFile::exists(ini)) {
        readIni(ini, defaults);
    } else {
        defaults.dataFolder =
            askServer(connection, "DefaultData", "InstanceDefaultDataPath", defaults.problem);
        defaults.logFolder = askServer(connection, "DefaultLog", "InstanceDefaultLogPath", defaults.problem);
    }
    defaults.dataFolder = withSeparator(defaults.dataFolder);
    defaults.logFolder = withSeparator(defaults.logFolder);
    return defaults;
}
