#include "ServerFile.h"
#include "support/TestClass.h"

#include <QTest>

/// Scripts of several statements, each on a database of its own.
class StatementsTest : public QObject {
    Q_OBJECT

    std::unique_ptr<ServerFile> m_file;
    std::unique_ptr<Server> m_server;

private slots:
    void init() {
        m_file = std::make_unique<ServerFile>();
        m_server = m_file->open();
        m_server->execute(Sql::script("create database d create database [a.b] create database [x]]y]"));
        m_server->execute(Sql::script("use d"));
        m_server->execute(Sql::script("create table t (id int identity(1,1) primary key, name varchar(10) "
                                      "null, amount money default 5, "
                                      "[Date] datetime, done bit not null default 0)"));
        m_server->execute(
            Sql::script("insert t (name, [Date]) values ('one', '2008/03/31'), ('Two', '20080401')"));
    }
    void cleanup() { m_server.reset(); }

    void script_data() {
        QTest::addColumn<QString>("script");
        QTest::addColumn<QString>("expected");
        const auto row = [](const char* name, const char* script, const char* expected) {
            QTest::newRow(name) << script << expected;
        };
        row("star", "select * from t where NAME = 'ONE  '", "1|one|5.0000|2008-03-31 00:00:00.000|0");
        row("date against text", "select name from t where [Date] >= '2008/04/01'", "Two");
        row("prefixes", "select t.name, dbo.t.id, d.dbo.t.id from d..t where d.dbo.[t].[id] = 2", "Two|2|2");
        row("correlated",
            "select id, (select count(*) from d.dbo.t where d.dbo.t.id < x.id) from t x order by id desc",
            "2|1;1|0");
        row("joins",
            "select a.id, b.id from t a left join t b on b.id = a.id + 1 right join (select 2 k) c on 1 = 1 "
            "order by a.id",
            "1|2;2|NULL");
        row("group",
            "select left(name, 1) x, count(*) n from t group by left(name, 1) having count(*) > 0 order by x "
            "desc",
            "T|1;o|1");
        row("no order that was not asked for",
            "select b from (select 1 b union select 2 union select 3 union select 4) x", "4;1;2;3");
        row("databases as they were made",
            "declare @s varchar(99) set @s = '' select @s = @s + name + ' ' from sysdatabases "
            "where dbid > 4 select @s",
            "d a.b x]y ");
        row("top", "declare @n int set @n = 1 select top (@n) id from t order by id desc", "2");
        row("union", "select id from t union all select 9 union select 9 order by id desc", "9;2;1");
        row("in subquery", "select id from t where name not in (select name from t where id = 1)", "2");
        row("identity",
            "insert t (name) values ('x') insert into t (name) select name from t where id < 3 "
            "select @@identity, scope_identity(), @@rowcount",
            "5|5|2");
        row("identity is not reused",
            "delete from t where id = 2 insert t (name) values ('x') select max(id) from t", "3");
        row("identity insert",
            "set identity_insert t on insert t (id, name) values (50, 'x') set identity_insert t off "
            "insert t (name) values ('y') select max(id) from t",
            "51");
        row("defaults",
            "insert t (name, amount, done) values ('x', default, 1) select amount, done, [Date] from t where "
            "id = 3",
            "5.0000|1|NULL");
        row("update all at once",
            "update t set name = amount, amount = id select name, amount from t where id = 2", "5.00|2.0000");
        row("temporary table",
            "create table #x (a int primary key, b varchar(5)) insert #x select id, name from t "
            "select b from #x where b = 'TWO'",
            "Two");
        row("table variable",
            "declare @v table (a int identity, b varchar(5)) insert @v (b) values ('p') "
            "select v.a, b from @v v",
            "1|p");
        row("while",
            "declare @i int, @s varchar(20) select @i = 0, @s = '' while 1 = 1 begin set @i = @i + 1 "
            "if @i = 2 continue if @i > 4 break set @s = @s + cast(@i as char(1)) end select @s",
            "134");
        row("concatenation over rows",
            "declare @s varchar(50) set @s = '' select @s = @s + name + ',' from t select @s", "one,Two,");
        row("a text that looks like a function of ours",
            "declare @x varchar(20) select @x = 'ts_variable(' + name from t order by id select @x",
            "ts_variable(Two");
        row("no row keeps the variable",
            "declare @s int set @s = 7 select @s = id from t where id = 99 select @s", "7");
        row("cursor",
            "declare @n varchar(10), @all varchar(50) set @all = '' declare c cursor local fast_forward for "
            "select name from t order by id desc open c fetch next from c into @n while @@fetch_status = 0 "
            "begin set @all = @all + @n fetch next from c into @n end close c deallocate c select @all",
            "Twoone");
        row("output parameters",
            "declare @c int exec sp_executesql N'use master select @c = @p + count(*) from d.dbo.t', "
            "N'@p int, @c int output', 10, @c = @c output select @c, db_name()",
            "12|d");
        row("catch", "begin try select 1/0 end try begin catch select error_number() end catch", "8134");
        row("rollback",
            "begin tran begin tran insert t (name) values ('x') commit rollback select count(*), @@trancount "
            "from t",
            "2|0");
        row("ansi nulls",
            "set ansi_nulls off insert t (name) values (null) select count(*) from t where name = null", "1");
        row("not null with default",
            "alter table t add [flag] [Bit] NOT NULL DEFAULT 0 select distinct flag from t", "0");
        row("default on new rows only",
            "alter table t add lvl smallint default 1 insert t (name) values ('x') "
            "select lvl from t",
            "NULL;NULL;1");
        row("alter column",
            "alter table t alter column name varchar(20) insert t (name) values ('longer than ten') "
            "select col_length('t', 'name'), count(*) from t",
            "20|3");
        row("alter column keeps texts that look like numbers",
            "create table n (a int) create index ix on n (a) insert n values (7), (10) begin tran "
            "alter table n alter column a varchar(5) rollback insert n values ('08') "
            "alter table n alter column a varchar(5) insert n values ('007'), ('1e2') "
            "select a from n where a in ('007', '7', '10', '8', '1e2') order by a",
            "007;10;1e2;7;8");
        row("drop column",
            "alter table t drop column name select count(*) from syscolumns where id = object_id('t')", "4");
        row("procedure",
            "exec('create proc p @a int, @b varchar(5) = ''def'', @c int output as set @c = @a * 2 select @b "
            "return 7') declare @r int, @o int exec @r = p @c = @o output, @a = 4 select @r, @o",
            "7|8");
        row("catalogue",
            "select count(*) from sysobjects join syscolumns on sysobjects.id = syscolumns.id where "
            "sysobjects.name = 'T' and syscolumns.name = 'NAME'",
            "1");
        row("other database's catalogue",
            "create table [a.b].dbo.b (i int) select name from [A.B].dbo.sysobjects "
            "where xtype = 'U' and id = object_id(N'[a.b].[dbo].[b]')",
            "b");
        row("names with dots differ",
            "create table [a.b].dbo.[c] (i int) create table [x]]y].dbo.[b.c] (i int) "
            "insert [x]]y]..[b.c] values (1) select count(*) from [a.b]..c",
            "0");
        row("hostile names",
            "create table [s]]e'l \"x-1] ([a b'] int, [from] int) insert [s]]e'l \"x-1] ([a b']) values (3) "
            "select [a b'] from d.dbo.[s]]e'l \"x-1]",
            "3");
        row("unique takes one null",
            "create table u (a int null unique) insert u values (null), (1) select count(*) from u", "2");
        row("add and drop constraints",
            "alter table t add constraint uq unique (name) alter table t add constraint df default 'none' "
            "for name "
            "insert t default values alter table t drop constraint uq alter table t drop constraint df "
            "insert t default values select name from t where id > 2 order by id",
            "none;NULL");
        row("index comes and goes",
            "create index ix on t (name) drop index t.ix create unique index ix on t (name, id) "
            "drop index ix on t select count(*) from t where name = 'two'",
            "1");
        row("procedure in another database",
            "use [a.b] exec('create proc p as select db_name() n') use d exec [a.b].dbo.p", "a.b");
        row("procedures see the caller's #tables",
            "create table #x (a int) exec('insert #x values (4)') select a from #x", "4");
        row("their own #tables end with them",
            "exec('create table #y (a int)') select object_id('tempdb..#y')", "NULL");
        row("return ends the procedure only",
            "exec('create proc p as return 1 select 1/0') exec p select 'on'", "on");
        row("nested catch",
            "begin try begin try select 1/0 end try begin catch select cast('x' as int) end catch "
            "end try begin catch select error_number(), error_message() end catch",
            "245|Conversion failed when converting the varchar value 'x' to data type int.");
        row("cursor keeps its variables' values",
            "declare @n int, @x int set @n = 2 declare c cursor for select id from t "
            "where id = @n set @n = 1 open c fetch c into @x close c deallocate c select @x",
            "2");
        row("order of day and month",
            "set dateformat dmy select cast('01/04/2008' as datetime), datepart(mm, '1-4-2008') "
            "set dateformat mdy",
            "2008-04-01 00:00:00.000|4");
        row("an hour that summer time skips",
            "select dateadd(hh, 1, '2008-03-30 01:30'), cast('2008-03-30 02:30' as datetime)",
            "2008-03-30 02:30:00.000|2008-03-30 02:30:00.000");
        row("dates in a column compare",
            "select count(*) from t where [Date] between '1 Mar 2008' and '2008-03-31T23:59:59'", "1");
        row("a text column beside numbers",
            "create table n (a varchar(5)) insert n values ('07'), ('8') select a from n where "
            "a = 7 or a in (8, 9) order by a",
            "07;8");
        row("in with dates", "select id from t where [Date] in ('2008/04/01', '20090101')", "2");
        row("derived table sees the outer query",
            "select id from t x where exists (select 1 from (select id from t where id > "
            "x.id) y)",
            "1");
        row("union joins types", "select 1 union all select 2.5 union all select null order by 1",
            "NULL;1.0;2.5");
        row("top in a union",
            "select * from (select top 1 id from t order by id desc) a union all select 9 "
            "order by 1",
            "2;9");
        row("system tables by their newer names",
            "select o.name, c.name from sys.tables o join sys.columns c on c.object_id = "
            "o.object_id where c.is_identity = 1",
            "t|id");
        row("plus equals",
            "declare @s varchar(9) set @s = 'a' set @s += 'b' update t set amount += 1.5 where id = 1 select "
            "@s, "
            "amount from t where id = 1",
            "ab|6.5000");
        row("declared inside what is skipped", "if 1 = 2 begin declare @z int end set @z = 4 select @z", "4");
        row("statements without separators", "declare @a int;set @a=1;;select @a+1 b where(@a=1)", "2");
        row("comments", "select /* one /* two */ 'x' */ 1 -- 'three\r\n + 1", "2");
        row("quoted names", "select \"name\" as \"a\"\"b\" from \"t\" where \"id\" = 1", "one");
        row("long text and other letters",
            "create table n (a nvarchar(max)) insert n values (N'Ω😀') declare @i int set @i = 0 "
            "while @i < 12 begin set @i = @i + 1 update n set a = a + a end select len(a) from n",
            "12288");
    }

    void script() {
        QFETCH(QString, script);
        QFETCH(QString, expected);
        QCOMPARE(rowsOf(*m_server, script), expected);
    }

    void countsAreReportedPerStatement() {
        const QString batch = "update t set done = 1 delete t where id = 1 select 1";
        const Results loud = m_server->execute(Sql::script(batch));
        QCOMPARE(loud.counts, (std::vector<qint64>{2, 1}));
        const Results quiet =
            m_server->execute(Sql::script("set nocount on update t set done = 1 set nocount off"));
        QVERIFY(quiet.counts.empty());
    }

    void columnNamesComeAlong() {
        const Results results =
            m_server->execute(Sql::script("select id, NAME as n, count(*), x = 1 from t group by id, name"));
        QCOMPARE(results.sets[0].columns(), (QStringList{"id", "n", "", "x"}));
    }

    /// What ran before a failing statement stays; what failed leaves nothing behind.
    void failureInTheMiddle() {
        QCOMPARE(errorNumber(*m_server,
                             "insert t (name) values ('kept') "
                             "insert t (name) select 'far too long a text' union all select 'x' select 1"),
                 8152);
        QCOMPARE(rowsOf(*m_server, "select count(*) from t"), "3");
        QCOMPARE(errorNumber(*m_server, "create table z (a int, primary key (b))"), 1911);
        QCOMPARE(rowsOf(*m_server, "select count(*) from sysobjects where name = 'z'"), "0");
        QCOMPARE(rowsOf(*m_server, "create table z (a int) select count(*) from z"), "0");
        QCOMPARE(errorNumber(*m_server, "set xact_abort on begin tran delete t select 1/0"), 8134);
        QCOMPARE(rowsOf(*m_server, "set xact_abort off select count(*), @@trancount from t"), "3|0");
    }

    void cachedProcedureFollowsItsText() {
        m_server->execute(Sql::script("create proc p as select 1 a"));
        QCOMPARE(rowsOf(*m_server, "p"), "1");
        m_server->execute(Sql::script("drop proc p"));
        m_server->execute(Sql::script("create proc p as select name from later"));
        QCOMPARE(errorNumber(*m_server, "exec p"), 208);
        m_server->execute(Sql::script("create table later (name int)"));
        QCOMPARE(rowsOf(*m_server, "exec d..p"), "");
    }
};

static const AnnounceTest<StatementsTest> announced;

#include "StatementsTest.moc"
