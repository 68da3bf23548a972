#include "db/SchedulerDatabase.h"

#include "db/Connection.h"
#include "db/DbError.h"
#include "db/ServerDefaults.h"

namespace {

/// Counts the columns of that name in the reports' table; `hint` follows the names of the two catalogue
/// tables.
Sql countReportColumn(const QString& column, const Sql& hint = sql("")) {
    return sql("SELECT count(*) as [RowCount] From sysobjects {}"
               "INNER JOIN syscolumns {}ON sysobjects.id = syscolumns.id "
               "WHERE syscolumns.name = {} AND sysobjects.name = 'tblTemplate_Report'",
               hint, hint, column);
}

bool isMissing(Connection& connection, const Sql& count) {
    return connection.scalar(count).toInt() == 0;
}

bool addColumn(Connection& connection, const Sql& add) {
    try {
        connection.execute(add);
        return true;
    } catch (const DbError& error) {
        if (error.number() != DbError::DuplicateColumn) throw;
        return false;
    }
}

void upgradeExcludedNumbers(Connection& connection, const QString& table) {
    connection.execute(
        sql("IF NOT Exists(SELECT [Name] FROM sysobjects WHERE [Name] = {}) CREATE TABLE [dbo].{} ( "
            " [ID] [int] IDENTITY(1,1) PRIMARY KEY, "
            " [TemplateID] [int] NOT NULL, "
            " [TelNo] [varchar] (25) COLLATE Latin1_General_CI_AS NULL , "
            " [Include] [bit] DEFAULT 0 "
            ") ON [PRIMARY] ",
            table, Name(table)));
    connection.execute(
        sql("DELETE FROM [NorvaScheduler].dbo.TblExcludedNumbers WHERE TemplateID NOT IN "
            "(SELECT DISTINCT TemplateID FROM [NorvaScheduler].dbo.tblTemplate) OR TemplateID IS NULL "));
}

/// Bands 15 to 17. The old fourteenth band becomes the seventeenth in the run that adds the fifteenth itself,
/// never again; one transaction, so that a run that is cut off does not add columns without the move.
void upgradeBandsTo17(Connection& connection) {
    QStringList missing;
    for (const char* column : {"Distance15", "Distance16", "Distance17"})
        if (isMissing(connection, countReportColumn(column))) missing << column;
    if (missing.isEmpty()) return;
    Transaction transaction(connection);
    bool addedBand15 = false;
    for (const QString& column : missing) {
        const bool added =
            addColumn(connection, sql("ALTER TABLE tblTemplate_Report ADD {} [bit] NULL  ", Name(column)));
        addedBand15 |= added && column == "Distance15";
    }
    if (addedBand15)
        connection.execute(sql("UPDATE tblTemplate_Report SET Distance17 = Distance14, Distance14 = 0 "));
    transaction.commit();
}

void upgradeBandsTo23(Connection& connection) {
    for (int band = 18; band <= 23; ++band) {
        const QString column = QString("Distance%1").arg(band);
        addMissingColumn(
            connection, countReportColumn(column),
            sql("ALTER TABLE tblTemplate_Report ADD {} [Bit] NOT NULL DEFAULT 0 ", Name(column)));
    }
}

/// A column added with the value that every existing report gets, as one step: what is filled without
/// having been added here would wipe what users have set since.
void addReportColumn(Connection& connection, const QString& column, const Sql& add, const Sql& fill) {
    const Sql count = countReportColumn(column, sql("WITH (NOLOCK) "));
    if (!isMissing(connection, count)) return;
    Transaction transaction(connection);
    if (!addColumn(connection, add)) return;
    connection.execute(fill);
    transaction.commit();
}

} // namespace

bool addMissingColumn(Connection& connection, const Sql& count, const Sql& add) {
    return isMissing(connection, count) && addColumn(connection, add);
}

bool schedulerDatabaseExists(Connection& connection) {
    return connection
               .scalar(sql("SELECT COUNT(*) FROM master.dbo.sysdatabases WHERE name = 'NorvaScheduler'"))
               .toInt()
           > 0;
}

bool schedulerTablesExist(Connection& connection) {
    return connection.scalar(sql("SELECT COUNT(*) FROM sysobjects WHERE name = 'tblTemplate'")).toInt() > 0;
}

void createSchedulerDatabase(Connection& connection, const ServerDefaults& defaults) {
    connection.execute(
        sql("CREATE DATABASE [NorvaScheduler] ON (NAME = N'NorvaScheduler_Data', FILENAME = {} , "
            "SIZE = 50, FILEGROWTH = 10%) LOG ON (NAME = N'NorvaScheduler_Log', FILENAME = {} , "
            "SIZE = 5, FILEGROWTH = 10%)",
            defaults.dataFolder + "NorvaScheduler_Data" + defaults.dataExtension,
            defaults.logFolder + "NorvaScheduler_Log" + defaults.logExtension));
}

void dropSchedulerDatabase(Connection& connection) {
    connection.setDefaultDatabase("master"); // a session that sits in a database keeps it from being dropped
    connection.execute(sql("Drop Database NorvaScheduler"));
}

void upgradeAtLogin(Connection& connection) {
    upgradeExcludedNumbers(connection, "TblExcludedNumbers");
    upgradeBandsTo17(connection);
    upgradeBandsTo23(connection);
}

void upgradeAtMainScreen(Connection& connection) {
    addReportColumn(connection, "UserId",
                    sql("ALTER TABLE NorvaScheduler.dbo.tblTemplate_Report ADD [UserID] [varchar] (30) "
                        "COLLATE Latin1_General_CI_AS NULL  "),
                    sql("UPDATE NorvaScheduler.dbo.tblTemplate_Report SET UserId = '' "));
    addReportColumn(
        connection, "CallClassParams",
        sql("ALTER TABLE NorvaScheduler.dbo.tblTemplate_Report ADD [CallClassParams] [varchar] (2000) "
            "COLLATE Latin1_General_CI_AS NULL  "),
        sql("UPDATE NorvaScheduler.dbo.tblTemplate_Report SET CallClassParams = '' "));
    addReportColumn(
        connection, "LineSelection",
        sql("ALTER TABLE NorvaScheduler.dbo.tblTemplate_Report ADD [LineSelection] [varchar] (100) "
            "COLLATE Latin1_General_CI_AS NULL  "),
        sql("UPDATE NorvaScheduler.dbo.tblTemplate_Report SET LineSelection = '' "));
    addReportColumn(connection, "BillIds",
                    sql("ALTER TABLE NorvaScheduler.dbo.tblTemplate_Report ADD [BillIds] [varchar] (200) "
                        "COLLATE Latin1_General_CI_AS NULL  "),
                    sql("UPDATE NorvaScheduler.dbo.tblTemplate_Report SET BillIds = '' "));
    addReportColumn(
        connection, "CostCentreLevel",
        sql("ALTER TABLE NorvaScheduler.dbo.tblTemplate_Report ADD [CostCentreLevel] [smallint] DEFAULT 1 "),
        sql("UPDATE NorvaScheduler.dbo.tblTemplate_Report SET CostCentreLevel = 1 "));
}
