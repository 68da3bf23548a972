#include "projects/ProjectList.h"

#include "base/Session.h"
#include "db/Procedure.h"

namespace {

/// Databases that hold no project, whatever tables they have.
Sql noProjects() {
    return sql(
        "'QXSpNum', 'NorvaTallymere', 'Northwind', 'pubs', 'tempdb', 'CostCentres', 'Master', 'Model', "
        "'msdb', "
        "'TrendDb', 'QXCcts', 'InterSite', 'NorvaQuorraPellar', 'VWT', 'NorvaMorvane'");
}

/// What keeps archives out of the list.
Sql isOffered() {
    return sql("charindex('ARCHIVE',Upper(name)) = 0 and has_dbaccess(name) = 1");
}

/// HasCC is 1 where the cost-centre table is missing, whatever its name says.
Sql createProjectListProcedure() {
    return sql(
        "CREATE PROCEDURE spGetProjectList\r\n"
        "@ArchivesOnly BIT\r\n"
        "AS\r\n"
        "SET NOCOUNT ON\r\n"
        "DECLARE @Status BIT\r\n"
        "DECLARE @LastError INT\r\n"
        "DECLARE @Csr CURSOR\r\n"
        "DECLARE @DBName VARCHAR(100)\r\n"
        "DECLARE @sql NVARCHAR(2000)\r\n"
        "DECLARE @myTable        TABLE ( [name] VARCHAR (100) , [HasCC] BIT )\r\n"
        "DECLARE @Count int\r\n"
        "DECLARE @BillAccount VARCHAR(100)\r\n"
        "DECLARE @CCtable VARCHAR(100)\r\n"
        "IF @ArchivesOnly = 0\r\n"
        "SET @Csr = CURSOR FAST_FORWARD FOR\r\n"
        "SELECT CONVERT(VARCHAR(100),[name])\r\n"
        "From master.dbo.sysdatabases\r\n"
        "WHERE [name] NOT IN ({})\r\n"
        "AND {}\r\n"
        "ELSE\r\n"
        "SET @Csr = CURSOR FAST_FORWARD FOR\r\n"
        "SELECT CONVERT(VARCHAR(100),[name])\r\n"
        "From master.dbo.sysdatabases\r\n"
        "WHERE [name] NOT IN ({})\r\n"
        "AND charindex('ARCHIVE',Upper(name)) > 0 and has_dbaccess(name) = 1\r\n"
        "OPEN @Csr\r\n"
        "FETCH NEXT FROM @Csr INTO @DBName\r\n"
        "WHILE @@FETCH_STATUS = 0\r\n"
        "BEGIN\r\n"
        "SET @Count = 0\r\n"
        "SET @BillAccount = NULL\r\n"
        "BEGIN TRY\r\n"
        "SET @sql = N'USE [' + REPLACE(@DBName, ']', ']]') + N'] SELECT @Found = COUNT(*) FROM sysobjects "
        "WHERE [name] = ''Tbl50'''\r\n"
        "EXEC sp_executesql @sql, N'@Found INT OUTPUT', @Found = @Count OUTPUT\r\n"
        "IF @Count > 0\r\n"
        "BEGIN\r\n"
        "SET @sql = N'USE [' + REPLACE(@DBName, ']', ']]') + N'] SELECT TOP 1 @Account = UnitabAccount FROM "
        "dbo.Tbl50'\r\n"
        "EXEC sp_executesql @sql, N'@Account VARCHAR(100) OUTPUT', @Account = @BillAccount OUTPUT\r\n"
        "END\r\n"
        "END TRY\r\n"
        "BEGIN CATCH\r\n" // a table that cannot be read: left out like one whose account has no cost centres
        "SET @BillAccount = NULL\r\n"
        "END CATCH\r\n"
        "IF @Count > 0\r\n"
        "BEGIN\r\n"
        "SET @CCtable = @BillAccount + '_Tblcc'\r\n"
        "SELECT @Count = COUNT(*) FROM CostCentres.dbo.sysobjects WHERE [name] = @CCtable\r\n"
        "SET @Status = 0\r\n"
        "IF @Count = 0 SET @Status = 1\r\n"
        "INSERT INTO @myTable ([name], [HasCC]) VALUES (@DBName, @Status)\r\n"
        "END\r\n"
        "FETCH NEXT FROM @Csr INTO @DBName\r\n"
        "END\r\n"
        "CLOSE @Csr\r\n"
        "DEALLOCATE @Csr\r\n"
        "SELECT * FROM @myTable\r\n",
        noProjects(), isOffered(), noProjects());
}

} // namespace

ProjectList loadProjectList(Session& session) {
    DefaultDatabase scheduler(session.db(), "NorvaScheduler");
    const RecordSet rows = runRecreated(session.db(),
                                        sql("If Exists(Select Name from sysobjects Where Name = "
                                            "'spGetProjectList') Drop Procedure spGetProjectList"),
                                        createProjectListProcedure(), sql("spGetProjectList 0"));
    ProjectList list;
    for (const Row row : rows) {
        const QString name = row.text("name");
        if (!row.flag("HasCC")) {
            list.names << name;
            continue;
        }
        list.leftOut << name;
        session.log.write(
            "Load Database List", 1,
            name + " appears to have no cost centres or is corrupt.  This project will not be listed");
    }
    list.names.sort(Qt::CaseInsensitive); // the server promises no order
    return list;
}

bool isOfferedAsProject(Session& session, const QString& database) {
    return !session.db()
                .query(
                    sql("SELECT [name] FROM master.dbo.sysdatabases WHERE [name] = {} AND [name] NOT IN ({}) "
                        "AND {}",
                        database, noProjects(), isOffered()))
                .isEmpty();
}

QList<ProjectDetails> readProjectDetails(Session& session, const QStringList& names) {
    QList<Sql> firstBills;
    for (const QString& name : names)
        firstBills << sql("SELECT TOP 1 * FROM {}.dbo.Tbl50 WITH (NOLOCK) ORDER BY BillID", Name(name));
    QList<ProjectDetails> details(names.size());
    QList<Sql> spans; // where the columns are there: older projects lack them
    QList<qsizetype> places;
    for (qsizetype i = 0; const RecordSet& bill : session.db().queryEach(firstBills)) {
        const auto has = [&](const char* column) {
            return bill.columns().contains(QLatin1StringView(column), Qt::CaseInsensitive);
        };
        if (!bill.isEmpty()) {
            details[i].account = bill.row(0).text("UnitabAccount");
            if (has("BillType")) details[i].billType = bill.row(0).integer("BillType");
        }
        if (has("BillStart") && has("BillEnd")) {
            spans << sql(
                "SELECT MIN(BillStart) AS FirstBill, MAX(BillEnd) AS LastBill FROM {}.dbo.Tbl50 WITH "
                "(NOLOCK)",
                Name(names[i]));
            places << i;
        }
        ++i;
    }
    for (qsizetype i = 0; const RecordSet& dates : session.db().queryEach(spans)) {
        ProjectDetails& project = details[places[i++]];
        if (dates.isEmpty()) continue;
        project.firstBill = dates.row(0).date("FirstBill");
        project.lastBill = dates.row(0).date("LastBill");
    }
    return details;
}
