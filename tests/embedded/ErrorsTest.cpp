#include "ServerFile.h"
#include "support/TestClass.h"

#include <QTest>

/// Error numbers as the real server's, and refusals of what this one does not know.
class ErrorsTest : public QObject {
    Q_OBJECT

    ServerFile m_file;
    std::unique_ptr<Server> m_server = m_file.open();

    static QStringList batches(const char* text) { return QString(text).simplified().split("; "); }

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
        row(207, "select nothing from t");
        row(207, "insert t (nothing) values (1)");
        row(208, "select * from nothing");
        row(911, "use nothing");
        row(8115, "create table #w (i int identity(2147483647, 1)) insert #w default values "
                  "insert #w default values");
        row(2812, "exec nothing");
        row(2714, "create table T (a int)");
        row(2705, "create table w (a int, A int)");
        row(2705, "alter table t add Name int");
        row(3701, "drop table nothing");
        row(3702, "drop database d");
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
        row(8115, "select cast('-9223372036854775808' as bigint) / -1");
        row(8115, "select (-cast('-9223372036854775808' as bigint)) / 2");
        row(242, "select cast('20080401' as datetime) + 1e300");
        row(241, "insert t (id, day) values (2, 'tomorrow')");
        row(242, "insert t (id, day) values (2, '31 Feb 2008')");
        row(515, "insert t (name) values ('b')");
        row(2627, "insert t (id, name) values (1, 'b')");
        row(2601, "insert t (id, name) values (2, 'A ')");
        row(1505,
            "begin tran insert t (id, name) values (2, 'b') create unique index uy on t (tiny) rollback");
        row(8134, "select 1 / 0");
        row(217, "exec('create proc loop as exec loop') exec loop");
        row(259, "delete sysobjects");
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

    /// What another server refuses must not work here either.
    void refused() {
        const QStringList wrong = batches(R"(
            select from t; select 1 /* open; select 1 where id; select id from t a, t b; select b.id from t a;
            exec p; exec p 1, 2; exec p @b = 1; select @nothing; select * from @nothing; declare @a int
            declare @a int; create database D; alter table nothing add a int; insert child (id) values (1);
            update child set id = 5; select id, count(*) from t; select id from t group by name; select
            distinct name from t order by id; select 1 union select 1, 2; select (select 1, 2); insert t (id)
            values (1, 2); insert t values (1); insert t (id) select 1, 2; open nothing; declare @a int
            declare c cursor for select 1 fetch next from c into @a; select * from (select 1) x; select * from
            (select 1 a, 2 a) x; select 1 from t x, t x; declare @a int select @a = 1, 2; declare k cursor for
            select 1 declare k cursor for select 1; declare @a int declare m cursor for select 1, 2 open m
            fetch m into @a; select id from t order by 2; select id from t where count(*) > 1; insert t (id,
            id) values (1, 2); select dateadd(yy, 9000, '20080401'); select 1 where 'a' like 'b' escape 'cc';
            create table w (a int not null primary key, b int not null primary key); create table w (a int
            null) alter table w add constraint q primary key (a); alter table t drop constraint nothing; alter
            table t drop column name; select left('a', -1); alter server role dbcreator add member nobody;
            exec sp_helpsrvrolemember 'none'; delete other.t; insert nothing..sysobjects (id) values (1);
            nothing 1; drop database nothing; select * from nothing.dbo.t; begin select 1; select 1 +; commit;
            rollback; select 'open; update t set name = null)");
        for (const QString& batch : wrong) QVERIFY2(errorNumber(*m_server, batch) > 0, qPrintable(batch));
        const QStringList unknown = batches(R"(
            select top 10 percent id from t; select soundex('a'); select convert(varchar(10), getdate(), 99);
            select convert(varchar(10), $1, 1); delete t from t a; select dbo.own(1); merge t using t; with w
            as (select 1 a) select * from w; select row_number() over (order by id) from t; select * from t
            for xml auto; create table w (a as 1); create table w (a int constraint c check (a > 1)); alter
            table t add constraint c foreign key (id) references child; create table w (a sql_variant); create
            table w (a varchar(5) collate Latin1_General_BIN); select * from linked.d.dbo.t; select id from t
            where id > all (select 1); insert t exec p 1; update t set name = 'x' where current of c; select
            serverproperty('LicenseType'))");
        for (const QString& batch : unknown) QVERIFY2(errorNumber(*m_server, batch) == -1, qPrintable(batch));
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
