#include "ServerFile.h"
#include "support/TestClass.h"

#include <QTest>

/// Statements of the kind that the program and the analysis product send, in their own wording.
class ProgramTest : public QObject {
    Q_OBJECT

    std::unique_ptr<ServerFile> m_file;
    std::unique_ptr<Server> m_server;

    void run(const QString& batch) { m_server->execute(Sql::script(batch)); }
    QString rows(const QString& batch) { return rowsOf(*m_server, batch); }

    static QString lines(const QStringList& list) { return list.join("\r\n"); }

private slots:
    void init() {
        m_file = std::make_unique<ServerFile>();
        m_server = m_file->open();
        for (const char* name : {"NorvaScheduler", "CostCentres", "[My-Project]", "[Old Archive]", "Plain"})
            run(QString("CREATE DATABASE %1").arg(name));
        run("USE NorvaScheduler");
    }
    void cleanup() { m_server.reset(); }

    void createsTheDatabase() {
        run("Drop Database Plain");
        run("CREATE DATABASE [Plain] ON (NAME = N'Plain_Data', FILENAME = N'C:\\Data\\Plain_Data.dbf' , SIZE "
            "= 50, "
            "FILEGROWTH = 10%) LOG ON (NAME = N'Plain_Log', FILENAME = N'C:\\Data\\Plain_Log.lbf' , SIZE = "
            "5, "
            "FILEGROWTH = 10%)");
        run("ALTER DATABASE [Plain] SET RECOVERY SIMPLE WITH NO_WAIT\r\nALTER DATABASE Plain SET AUTO_CLOSE "
            "OFF, "
            "AUTO_SHRINK ON\r\nUSE Plain");
        QCOMPARE(rows("select db_name()"), "Plain");
    }

    void serverDefaults() {
        run("exec xp_regwrite N'HKEY_LOCAL_MACHINE', N'SOFTWARE\\Microsoft\\Microsoft SQL "
            "Server\\GENERAL\\MSSQLServer', "
            "N'DefaultLog', 'REG_SZ', N'C:\\Log\\'");
        const QString attempt =
            "exec master.dbo.xp_regread N'HKEY_LOCAL_MACHINE', @reg, N'DefaultLog', @value OUTPUT";
        const QString text = lines(
            {"CREATE PROCEDURE spGetDefaults (", " @value varchar(1000) OUTPUT", ") AS ",
             "declare @inst nvarchar(200)", "declare @reg nvarchar(500)",
             "set @reg = N'SOFTWARE\\Microsoft\\MSSQLServer\\MSSQLServer\\'", attempt, "if (@Value is null)",
             "begin", "set @inst = convert(nvarchar(200), serverproperty('InstanceName'))",
             "if @inst is null set @inst = N'GENERAL'",
             "set @reg = N'SOFTWARE\\Microsoft\\Microsoft SQL Server\\' + @inst + N'\\MSSQLServer'", attempt,
             "end"});
        for (int time = 0; time < 2; ++time) {
            run("If Exists(Select Name from sysobjects Where Name = 'spGetDefaults') Drop Procedure "
                "spGetDefaults");
            run(text);
        }
        QCOMPARE(rows("declare @v varchar(1000) exec spGetDefaults @v OUTPUT select @v"), "C:\\Log\\");
    }

    void projectList() {
        for (const char* project : {"[My-Project]", "[Old Archive]"})
            run(QString("create table %1.dbo.Tbl50 (RecID int, UnitabAccount varchar(20)) insert "
                        "%1.dbo.Tbl50 values "
                        "(1, 'ACC1')")
                    .arg(project));
        const QString names =
            "SELECT CONVERT(VARCHAR(100),[name])\r\nFrom master.dbo.sysdatabases where name not in "
            "('tempdb', 'CostCentres', 'Master', 'Model', 'msdb') and charindex('ARCHIVE',Upper(name)) %1 0 "
            "and has_dbaccess(name) = 1";
        run(lines({"CREATE PROCEDURE spGetProjectList",
                   "@ArchivesOnly BIT",
                   "AS",
                   "SET NOCOUNT ON",
                   "DECLARE @Status BIT, @LastError INT",
                   "DECLARE @Csr CURSOR",
                   "DECLARE @DBName VARCHAR(100)",
                   "DECLARE @sql NVARCHAR(2000)",
                   "DECLARE @myTable        TABLE ( [name] VARCHAR (100) , [HasCC] BIT )",
                   "DECLARE @Count int, @BillAccount VARCHAR(100), @CCtable VARCHAR(100)",
                   "IF @ArchivesOnly = 0",
                   "SET @Csr = CURSOR FAST_FORWARD FOR " + names.arg("="),
                   "ELSE",
                   "SET @Csr = CURSOR FAST_FORWARD FOR " + names.arg(">"),
                   "OPEN @Csr",
                   "FETCH NEXT FROM @Csr INTO @DBName",
                   "WHILE @@FETCH_STATUS = 0",
                   "BEGIN",
                   "SET @sql = 'USE [' + @DBName + '] SELECT @Count = COUNT(*) FROM sysobjects WHERE name = "
                   "''Tbl50'''",
                   "EXEC sp_executesql @sql, N'@Count int OUTPUT', @Count OUTPUT",
                   "IF @Count > 0",
                   "BEGIN",
                   "SET @sql = 'USE [' + @DBName + '] SELECT TOP 1 @BillAccount = UnitabAccount FROM Tbl50'",
                   "EXEC sp_executesql @sql, N'@BillAccount varchar(100) OUTPUT', @BillAccount OUTPUT",
                   "SET @CCtable = @BillAccount + '_Tblcc'",
                   "SELECT @Count = COUNT(*) FROM CostCentres.dbo.sysobjects WHERE name = @CCtable",
                   "SET @Status = 0",
                   "IF @Count = 0 SET @Status = 1",
                   "INSERT INTO @myTable VALUES (@DBName, @Status)",
                   "END",
                   "FETCH NEXT FROM @Csr INTO @DBName",
                   "END",
                   "CLOSE @Csr",
                   "DEALLOCATE @Csr",
                   "SELECT * FROM @myTable"}));
        QCOMPARE(rows("spGetProjectList 0"), "My-Project|1");
        QCOMPARE(rows("spGetProjectList 1"), "Old Archive|1");
        run("create table CostCentres..ACC1_TblCC (a int)");
        QCOMPARE(rows("spGetProjectList 0"), "My-Project|0");
        QCOMPARE(rows("select db_name()"), "NorvaScheduler");
    }

    void upgrades() {
        run("CREATE TABLE [dbo].[tblTemplate] ([TemplateID] [int] IDENTITY (1, 1) NOT NULL) ON [PRIMARY] "
            "insert tblTemplate default values");
        run("CREATE TABLE tblTemplate_Report ([TemplateID] int, [Distance14] [bit] NOT NULL) "
            "insert tblTemplate_Report values (1, 1)");
        const QString create =
            "IF NOT Exists(SELECT [Name] FROM sysobjects WHERE [Name] = 'TblExcludedNumbers') CREATE TABLE "
            "[dbo].[TblExcludedNumbers] (  [ID] [int] IDENTITY(1,1) PRIMARY KEY,  [TemplateID] [int] NOT "
            "NULL,  "
            "[TelNo] [varchar] (25) COLLATE Latin1_General_CI_AS NULL ,  [Include] [bit] DEFAULT 0 ) ON "
            "[PRIMARY] ";
        run(create);
        run("insert TblExcludedNumbers (TemplateID, TelNo) values (1, '1'), (-1, '2'), (7, '3')");
        run(create);
        run("DELETE FROM [NorvaScheduler].dbo.TblExcludedNumbers WHERE TemplateID NOT IN (SELECT DISTINCT "
            "TemplateID "
            "FROM [NorvaScheduler].dbo.tblTemplate) OR TemplateID IS NULL ");
        QCOMPARE(rows("select TelNo, Include from TblExcludedNumbers"), "1|0");
        const QString count =
            "SELECT count(*) as [RowCount] From sysobjects INNER JOIN syscolumns ON sysobjects.id = "
            "syscolumns.id WHERE syscolumns.name = 'Distance17' AND sysobjects.name = "
            "'tblTemplate_Report'";
        QCOMPARE(rows(count), "0");
        run("ALTER TABLE tblTemplate_Report ADD [Distance17] [bit] NULL ");
        run("UPDATE tblTemplate_Report SET Distance17 = Distance14, Distance14 = 0 ");
        run("ALTER TABLE tblTemplate_Report ADD [Distance18] [Bit] NOT NULL DEFAULT 0  ALTER TABLE "
            "tblTemplate_Report "
            "ADD [Distance19] [Bit] NOT NULL DEFAULT 0 ");
        QCOMPARE(rows(count), "1");
        QCOMPARE(rows("select * from tblTemplate_Report"), "1|0|1|0|0");
    }

    void timeBands() {
        run("use [My-Project]");
        run("create table TblCallRecords ([Date] datetime, calltime varchar(4), TimeBand varchar(2), "
            "TimeBandCopy varchar(2))");
        // 31 March 2008 was a Monday, 5 April a Saturday.
        run("insert TblCallRecords values ('2008/03/31', '1901', 'D', null), ('2008/04/05', '1200', 'D', "
            "null), "
            "('2008/04/06', '1200', 'D', null), ('2008/04/01', '1900', 'X', null), ('2008/04/01', '1901', "
            "'X', null), "
            "('2008/04/01', '0659', 'X', null), ('2008/04/01', '0700', 'X', null)");
        const QString update =
            "Update [My-Project].DBO.tblcallrecords set %1 =  case when DatePart(dw,Date) = 1 or "
            "DatePart(dw,Date) = 7 then 'W'  Else     case when cast(calltime as int) > 1900 or "
            "cast(calltime as int) < 700 Then 'C'      Else    'D'     End End ";
        run(update.arg("TimeBand") + " Where  [Date] >= '2008/04/01' ");
        run(update.arg("TimeBandCopy"));
        QCOMPARE(rows("select TimeBand, TimeBandCopy from TblCallRecords"), "D|C;W|W;W|W;D|D;C|C;C|C;D|D");
        QCOMPARE(rows("Select count(*) from [My-Project].DBO.tblCallrecords Where TimeBandCopy = '' or "
                      "TimeBandCopy is null"),
                 "0");
        QCOMPARE(
            rows("if exists (select * from syscolumns where id = object_id(N'[dbo].[TblCallRecords]') and "
                 "lower([name]) = N'timebandcopy') select 1 else select 0"),
            "1");
    }

    void costCentres() {
        const QString table = lines({"CREATE TABLE %1 (", "[ID] [int] IDENTITY (1, 1) NOT NULL ,",
                                     "[UnitabAccount] [varchar] (20) COLLATE Latin1_General_CI_AS NOT NULL ,",
                                     "[CostCentre1] [varchar] (30) COLLATE Latin1_General_CI_AS NULL ,",
                                     "[TelNo] [varchar] (25) COLLATE Latin1_General_CI_AS NULL ,",
                                     "[Checked] [smallint] NULL", ") ON [PRIMARY]"});
        const QString master = "[CostCentres].[dbo].[A_TblCC]";
        const QString copy = "[CostCentres].[dbo].[A_o'neil_TblCC]";
        run(table.arg(master));
        run("insert " + master
            + " (UnitabAccount, CostCentre1, TelNo) values ('A', 'North', '1'), ('A', null, '2')");
        const QString guarded = "if not exists (select * from dbo.sysobjects where id = object_id(N'"
                                + QString(copy).replace('\'', "''")
                                + "') and OBJECTPROPERTY(id, N'IsUserTable') = 1)\r\n" + table.arg(copy);
        run("use [My-Project]");
        run(guarded);
        // The test looks into another database's catalogue, so the table is made again, which fails.
        QCOMPARE(errorNumber(*m_server, guarded), int(DbError::AlreadyExists));
        const QString missing =
            "TelNo Not in (Select Distinct TelNo from Costcentres.dbo.[A_o'neil_TblCC] Where "
            "UnitabAccount = @billaccount)";
        for (int time = 0; time < 2; ++time) {
            run("If Exists(Select Name from sysobjects Where Name = 'o''neil_Ensure') Drop Procedure "
                "[o'neil_Ensure]");
            run("CREATE PROCEDURE [o'neil_Ensure]\r\n@BillAccount varchar(20)\r\nAS\r\nDeclare csrCC Cursor "
                "for Select "
                "CostCentre1,TelNo From "
                + copy + " Where UnitabAccount = @billaccount AND " + missing
                + "\r\ninsert Costcentres.dbo.[A_o'neil_TblCC] (UnitabAccount, Costcentre1, TelNo) Select "
                  "'A',CostCentre1,TelNo From [Costcentres].[dbo].[A_TblCC] Where UnitabAccount = "
                  "@billaccount AND "
                + missing + "\r\n");
            run("EXECUTE [o'neil_Ensure] 'A'");
            QCOMPARE(rows("select CostCentre1, TelNo from " + copy), "North|1;NULL|2");
        }
        QCOMPARE(rows("SELECT Distinct [CostCentre1] FROM " + copy
                      + " WHERE len([CostCentre1]) > 0 Order By [CostCentre1]"),
                 "North");
    }

    void billTotals() {
        run("create table Plain.dbo.TblCallRecords (BillID int, OrigCost money) create table "
            "Plain.dbo.TblMobCalls "
            "(BillID int, OrigCost float) insert Plain..TblCallRecords values (1, 1.5), (1, 2.25), (2, 9)");
        QCOMPARE(rows("SELECT Cast(SUM(NewCost) as decimal(15,2)) MyTotal From (  Select "
                      "Isnull(Sum(OrigCost),0) NewCost "
                      "from Plain.dbo.TblCallRecords Where BillID = 1 Union all  Select "
                      "Isnull(Sum(OrigCost),0) from "
                      "Plain.dbo.TblMobCalls Where BillID = 1 ) Tbl"),
                 "3.75");
    }

    void templateUsage() {
        run("create table tblTemplate (TemplateID int) insert tblTemplate values (1), (2)");
        run("create table tblSchedule (TemplateID int, Status int, RanDate varchar(30), Username "
            "varchar(30)) insert "
            "tblSchedule values (1, 0, '', 'o''neil'), (1, 4, '2008-Apr-01 09:05:00', 'O''Neil'), (1, 0, "
            "'x', 'other')");
        QCOMPARE(
            rows("SELECT [TemplateID], (SELECT COUNT(*) FROM NorvaScheduler.dbo.[tblSchedule] WHERE "
                 "([Status] = 0) AND "
                 "(NorvaScheduler.dbo.[tblSchedule].[TemplateID] = "
                 "NorvaScheduler.dbo.[tblTemplate].[TemplateID]) And "
                 "Username = N'o''neil' ) AS [ActiveCount], (SELECT MAX([RanDate]) FROM "
                 "NorvaScheduler.dbo.[tblSchedule] WHERE (NorvaScheduler.dbo.[tblSchedule].[TemplateID] = "
                 "NorvaScheduler.dbo.[tblTemplate].[TemplateID]) AND ([RanDate] <> '') AND Username = "
                 "N'o''neil') AS "
                 "[LastUsed] FROM NorvaScheduler.dbo.[tblTemplate] "),
            "1|1|2008-Apr-01 09:05:00;2|0|NULL");
    }

    void numberListIsMadeAnew() {
        const QString batch =
            "if exists (select * from dbo.sysobjects where id = object_id(N'[dbo].[me_TblCallsTo]') and "
            "OBJECTPROPERTY(id, N'IsUserTable') = 1) drop table [dbo].[me_TblCallsTo]\r\nCREATE TABLE "
            "[dbo].[me_TblCallsTo] ([CalledNo] [varchar] (20) COLLATE Latin1_General_CI_AS NULL) ON "
            "[PRIMARY]";
        run(batch);
        run("insert me_TblCallsTo values ('1')");
        run(batch);
        QCOMPARE(rows("SELECT CalledNo FROM NorvaScheduler.dbo.me_TblCallsTo"), "");
    }
};

static const AnnounceTest<ProgramTest> announced;

#include "ProgramTest.moc"
