#include "db/SchedulerDatabase.h"

#include "db/Connection.h"
#include "db/DbError.h"
#include "db/ServerDefaults.h"

namespace {

/// Those of the columns that the reports' table lacks, in one round trip; `hint` follows the names of the two
/// catalogue tables.
QStringList missingReportColumns(Connection& connection, const QStringList& columns, const Sql& hint) {
    QList<Sql> counts;
    for (const QString& column : columns)
        counts << sql("SELECT count(*) as [RowCount] From sysobjects {}"
                      "INNER JOIN syscolumns {}ON sysobjects.id = syscolumns.id "
                      "WHERE syscolumns.name = {} AND sysobjects.name = 'tblTemplate_Report'",
                      hint, hint, column);
    return missingColumns(connection, columns, counts);
}

void upgradeExcludedNumbers(Connection& connection, OrphanedNumbers orphans) {
    const QString table = "TblExcludedNumbers";
    Sql upgrade =
        sql("IF NOT Exists(SELECT [Name] FROM sysobjects WHERE [Name] = {}) CREATE TABLE [dbo].{} ( "
            " [ID] [int] IDENTITY(1,1) PRIMARY KEY, "
            " [TemplateID] [int] NOT NULL, "
            " [TelNo] [varchar] (25) COLLATE Latin1_General_CI_AS NULL , "
            " [Include] [bit] DEFAULT 0 "
            ") ON [PRIMARY] \r\n",
            table, Name(table));
    if (orphans == OrphanedNumbers::Purge)
        upgrade +=
            sql("DELETE FROM [NorvaScheduler].dbo.TblExcludedNumbers WHERE TemplateID NOT IN "
                "(SELECT DISTINCT TemplateID FROM [NorvaScheduler].dbo.tblTemplate) OR TemplateID IS NULL ");
    connection.execute(upgrade);
}

/// Bands 15 to 17. The old fourteenth band becomes the seventeenth in the run that adds the fifteenth itself,
/// never again; one transaction, so that a run that is cut off does not add columns without the move.
void addBandsTo17(Connection& connection, const QStringList& missing) {
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

void upgradeBands(Connection& connection) {
    QStringList columns;
    for (int band = 15; band <= 23; ++band) columns << QString("Distance%1").arg(band);
    QStringList to17;
    QStringList to23;
    for (const QString& column : missingReportColumns(connection, columns, sql("")))
        (columns.indexOf(column) < 3 ? to17 : to23) << column;
    addBandsTo17(connection, to17);
    for (const QString& column : to23)
        addColumn(connection,
                  sql("ALTER TABLE tblTemplate_Report ADD {} [Bit] NOT NULL DEFAULT 0 ", Name(column)));
}

/// A column added with the value that every existing report gets, as one step: what is filled without
/// having been added here would wipe what users have set since.
struct LaterColumn {
    QString name;
    Sql add;
    Sql fill;
};

QList<LaterColumn> laterColumns() {
    return {
        {"UserId",
         sql("ALTER TABLE NorvaScheduler.dbo.tblTemplate_Report ADD [UserID] [varchar] (30) "
             "COLLATE Latin1_General_CI_AS NULL  "),
         sql("UPDATE NorvaScheduler.dbo.tblTemplate_Report SET UserId = '' ")},
        {"CallClassParams",
         sql("ALTER TABLE NorvaScheduler.dbo.tblTemplate_Report ADD [CallClassParams] [varchar] (2000) "
             "COLLATE Latin1_General_CI_AS NULL  "),
         sql("UPDATE NorvaScheduler.dbo.tblTemplate_Report SET CallClassParams = '' ")},
        {"LineSelection",
         sql("ALTER TABLE NorvaScheduler.dbo.tblTemplate_Report ADD [LineSelection] [varchar] (100) "
             "COLLATE Latin1_General_CI_AS NULL  "),
         sql("UPDATE NorvaScheduler.dbo.tblTemplate_Report SET LineSelection = '' ")},
        {"BillIds",
         sql("ALTER TABLE NorvaScheduler.dbo.tblTemplate_Report ADD [BillIds] [varchar] (200) "
             "COLLATE Latin1_General_CI_AS NULL  "),
         sql("UPDATE NorvaScheduler.dbo.tblTemplate_Report SET BillIds = '' ")},
        {"CostCentreLevel",
         sql("ALTER TABLE NorvaScheduler.dbo.tblTemplate_Report ADD [CostCentreLevel] [smallint] DEFAULT 1 "),
         sql("UPDATE NorvaScheduler.dbo.tblTemplate_Report SET CostCentreLevel = 1 ")},
    };
}

} // namespace

QStringList missingColumns(Connection& connection, const QStringList& columns, const QList<Sql>& counts) {
    const std::vector<RecordSet> answers = connection.queryAll(counts);
    QStringList missing;
    for (qsizetype i = 0; i < columns.size(); ++i)
        if (answers[std::size_t(i)].row(0).integer(0) == 0) missing << columns[i];
    return missing;
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

void upgradeAtLogin(Connection& connection, OrphanedNumbers orphans) {
    upgradeExcludedNumbers(connection, orphans);
    upgradeBands(connection);
}

void upgradeAtMainScreen(Connection& connection) {
    const QList<LaterColumn> columns = laterColumns();
    QStringList names;
    for (const LaterColumn& column : columns) names << column.name;
    const QStringList missing = missingReportColumns(connection, names, sql("WITH (NOLOCK) "));
    for (const LaterColumn& column : columns) {
        if (!missing.contains(column.name)) continue;
        Transaction transaction(connection);
        if (!addColumn(connection, column.add)) continue;
        connection.execute(column.fill);
        transaction.commit();
    }
}
