#include "ServerFile.h"
#include "support/TestClass.h"

#include <QTest>

/// Error numbers as the real server's, and refusals of what this one does not know.
class ErrorsTest : public QObject {
    Q_OBJECT

    ServerFile m_file;
    std::unique_ptr<Server> m_server = m_file.open();

private slots:
    void initTestCase() {
        m_server->execute(Sql::script("create database d"));
        m_server->execute(Sql::script("use d"));
        m_server->execute(
            Sql::script("create table t (id int primary key, name varchar(5) not null default 'x', "
                        "tiny tinyint, day datetime, d decimal(5,2))"));
        m_server->execute(Sql::script("create table child (id int identity, parent int)"));
        m_server->execute(Sql::script("create unique index ux on t (name)"));
        m_server->execute(Sql::script("insert t (id, name) values (1, 'a')"));
        m_server->execute(Sql::script("insert child values (1)"));
        m_server->execute(Sql::script("create proc p @a int as select @a"));
    }

    void number_data() {
        QTest::addColumn<QString>("batch");
        QTest::addColumn<int>("number");
        const auto row = [](int number, const QString& batch) {
            QTest::addRow("%d %s", number, qPrintable(batch.left(60))) << batch << number;
        };
        const auto deep = [](const char* part) { return QString(part).repeated(100'000); };
        row(191, "select " + deep("(") + '1' + deep(")"));
        row(191, "select " + deep("(select ") + '1' + deep(")"));
        row(191, "select " + deep("case when 1 = 1 then ") + '1' + deep(" end"));
        row(191, "select " + deep("1+") + '1');
        row(191, "select " + deep("- ") + '1');
        row(191, "if " + deep("not ") + "1 = 1 select 1");
        row(191, deep("if 1 = 1 ") + "select 1");
        row(191, deep("begin ") + "select 1" + deep(" end"));
        row(191, "select * from " + deep("(") + 't' + deep(")"));
        row(191, deep("(") + "select 1" + deep(")"));
        row(102, "select * frm t");
        row(102, "select 1 +");
        row(156, "select from t");
        row(102, "begin select 1");
        row(105, "select 'open");
        row(113, "select 1 /* open");
        row(4145, "select 1 where id");
        row(207, "select nothing from t");
        row(207, "insert t (nothing) values (1)");
        row(208, "select * from nothing");
        row(208, "delete other.t");
        row(209, "select id from t a, t b");
        row(4104, "select b.id from t a");
        row(911, "use nothing");
        row(208, "select * from nothing.dbo.t");
        row(208, "insert nothing..sysobjects (id) values (1)");
        row(8115, "create table #w (i int identity(2147483647, 1)) insert #w default values "
                  "insert #w default values");
        row(2812, "exec nothing");
        row(2812, "nothing 1");
        row(201, "exec p");
        row(8144, "exec p 1, 2");
        row(8145, "exec p @b = 1");
        row(137, "select @nothing");
        row(1087, "select * from @nothing");
        row(134, "declare @a int declare @a int");
        row(2714, "create table T (a int)");
        row(2705, "create table w (a int, A int)");
        row(2705, "alter table t add Name int");
        row(1801, "create database D");
        row(3701, "drop table nothing");
        row(3701, "drop database nothing");
        row(3702, "drop database d");
        row(4902, "alter table nothing add a int");
        row(4901, "alter table t add a int not null");
        row(8152, "insert t (id, name) values (2, 'abcdef')");
        row(8152, "update t set name = 'abcdef'");
        row(0, "begin tran insert t (id, name) values (2, 'abcde   ') rollback");
        row(245, "insert t (id) values ('1.5')");
        row(245, "select * from t where id = 'x'");
        row(8114, "insert t (id, d) values (2, 'x')");
        row(8115, "insert t (id, d) values (2, 1000)");
        row(220, "insert t (id, tiny) values (2, 256)");
        row(8115, "select 2147483647 + 1");
        row(241, "insert t (id, day) values (2, 'tomorrow')");
        row(242, "insert t (id, day) values (2, '31 Feb 2008')");
        row(515, "insert t (name) values ('b')");
        row(515, "update t set name = null");
        row(544, "insert child (id) values (1)");
        row(8102, "update child set id = 5");
        row(2627, "insert t (id, name) values (1, 'b')");
        row(2601, "insert t (id, name) values (2, 'A ')");
        row(1505,
            "begin tran insert t (id, name) values (2, 'b') create unique index uy on t (tiny) rollback");
        row(8134, "select 1 / 0");
        row(8120, "select id, count(*) from t");
        row(8120, "select id from t group by name");
        row(145, "select distinct name from t order by id");
        row(205, "select 1 union select 1, 2");
        row(116, "select (select 1, 2)");
        row(110, "insert t (id) values (1, 2)");
        row(213, "insert t values (1)");
        row(121, "insert t (id) select 1, 2");
        row(3902, "commit");
        row(3903, "rollback");
        row(16916, "open nothing");
        row(16917, "declare @a int declare c cursor for select 1 fetch next from c into @a");
        row(8155, "select * from (select 1) x");
        row(8156, "select * from (select 1 a, 2 a) x");
        row(1011, "select 1 from t x, t x");
        row(141, "declare @a int select @a = 1, 2");
        row(16915, "declare k cursor for select 1 declare k cursor for select 1");
        row(16924, "declare @a int declare m cursor for select 1, 2 open m fetch m into @a");
        row(108, "select id from t order by 2");
        row(147, "select id from t where count(*) > 1");
        row(264, "insert t (id, id) values (1, 2)");
        row(517, "select dateadd(yy, 9000, '20080401')");
        row(506, "select 1 where 'a' like 'b' escape 'cc'");
        row(217, "exec('create proc loop as exec loop') exec loop");
        row(1779, "create table w (a int not null primary key, b int not null primary key)");
        row(8111, "create table w (a int null) alter table w add constraint q primary key (a)");
        row(3728, "alter table t drop constraint nothing");
        row(5074, "alter table t drop column name");
        row(259, "delete sysobjects");
        row(537, "select left('a', -1)");
        row(15007, "alter server role dbcreator add member nobody");
        row(15412, "exec sp_helpsrvrolemember 'none'");
    }

    void number() {
        QFETCH(QString, batch);
        QFETCH(int, number);
        const QString before = rowsOf(*m_server, "select count(*) from d.dbo.t");
        QCOMPARE(errorNumber(*m_server, batch), number);
        if (rowsOf(*m_server, "select @@trancount") != "0") m_server->execute(Sql::script("rollback"));
        m_server->execute(Sql::script("use d"));
        QCOMPARE(rowsOf(*m_server, "select count(*) from d.dbo.t"), before);
    }

    void refusal_data() {
        QTest::addColumn<QString>("batch");
        QTest::addColumn<QString>("named");
        const auto row = [](const char* batch, const char* named) { QTest::newRow(batch) << batch << named; };
        row("select top 10 percent id from t", "TOP … PERCENT");
        row("select soundex('a')", "function SOUNDEX");
        row("select convert(varchar(10), getdate(), 99)", "date style 99");
        row("select convert(varchar(10), $1, 1)", "CONVERT of a number with a style");
        row("delete t from t a", "DELETE … FROM");
        row("select dbo.own(1)", "function dbo.own");
        row("merge t using t", "MERGE");
        row("with w as (select 1 a) select * from w", "WITH");
        row("select row_number() over (order by id) from t", "OVER");
        row("select * from t for xml auto", "FOR XML");
        row("create table w (a as 1)", "computed columns");
        row("create table w (a int constraint c check (a > 1))", "CHECK constraints");
        row("alter table t add constraint c foreign key (id) references child", "FOREIGN KEY constraints");
        row("create table w (a sql_variant)", "type sql_variant");
        row("create table w (a varchar(5) collate Latin1_General_BIN)", "collation Latin1_General_BIN");
        row("select * from linked.d.dbo.t", "a name with a server: linked.d.dbo.t");
        row("select id from t where id > all (select 1)", "a comparison with ALL");
        row("insert t exec p 1", "INSERT … EXEC");
        row("update t set name = 'x' where current of c", "WHERE CURRENT");
        row("select serverproperty('LicenseType')", "SERVERPROPERTY LicenseType");
    }

    void refusal() {
        QFETCH(QString, batch);
        QFETCH(QString, named);
        try {
            m_server->execute(Sql::script(batch));
            QFAIL("It was not refused.");
        } catch (const DbError& error) {
            QCOMPARE(error.text(), "not supported by the embedded server: " + named);
        }
    }

    void statementIsShownWithoutItsSecrets() {
        try {
            m_server->execute(sql("select * from nothing where password = {}", Secret{"hidden"}));
            QFAIL("There is no such table.");
        } catch (const DbError& error) {
            QCOMPARE(error.statement(), "select * from nothing where password = N'***'");
        }
    }
};

static const AnnounceTest<ErrorsTest> announced;

#include "ErrorsTest.moc"
