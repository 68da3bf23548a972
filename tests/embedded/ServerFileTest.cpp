#include "ServerFile.h"
#include "embedded/Sqlite.h"
#include "support/TestClass.h"

#include <QFile>
#include <QTest>
#include <thread>

namespace {

DbError errorOf(const std::function<void()>& action) {
    try {
        action();
    } catch (const DbError& error) {
        return error;
    }
    return DbError(0, "no error");
}

} // namespace

/// The file as a server: who gets in, who may do what, several sessions at once, and its loss.
class ServerFileTest : public QObject {
    Q_OBJECT

    std::unique_ptr<ServerFile> m_file;
    std::unique_ptr<Server> m_server;

    DbError openError(const ConnectionString& target) {
        return errorOf([&] { embedded::EmbeddedServer::open(target); });
    }

private slots:
    void init() {
        m_file = std::make_unique<ServerFile>();
        m_server = m_file->open();
        for (const char* batch :
             {"create database d create database closed create database others",
              "create login [x]]y] with password = N'secret', check_policy = off",
              "alter server role dbcreator add member [x]]y]",
              "alter server role bulkadmin add member [x]]y]",
              "use closed create user [x]]y] for login [x]]y] deny connect to [x]]y] use d",
              "create user [x]]y] for login [x]]y]", "create table d.dbo.t (id int identity, a int)"})
            m_server->execute(Sql::script(batch));
    }
    void cleanup() { m_server.reset(); }

    void logins() {
        QCOMPARE(rowsOf(*m_file->open("D", "SA"), "select db_name(), suser_sname()"), "d|sa");
        QCOMPARE(openError(m_file->target({}, "sa", "Secret")).number(), int(DbError::LoginFailed));
        QCOMPARE(openError(m_file->target({}, "nobody")).number(), int(DbError::LoginFailed));
        QCOMPARE(openError(m_file->target({}, "sa' or 1=1 --", "")).number(), int(DbError::LoginFailed));
        QCOMPARE(openError(m_file->target("none")).number(), int(DbError::CannotOpenDatabase));
        QCOMPARE(openError(m_file->target("closed", "x]y")).number(), int(DbError::CannotOpenDatabase));
        m_server->execute(Sql::script("drop login [x]]y]"));
        QCOMPARE(openError(m_file->target({}, "x]y")).number(), int(DbError::LoginFailed));
    }

    void rightsOfAnOrdinaryLogin() {
        const auto server = m_file->open("d", "x]y");
        QCOMPARE(rowsOf(*server, "select has_dbaccess('closed'), has_dbaccess('d')"), "0|1");
        for (const auto& [batch, number] :
             {std::pair("use closed", 916), std::pair("select * from closed..t", 916),
              std::pair("use others", 916), std::pair("create login z with password = 'z'", 15247),
              std::pair("exec xp_regwrite 'h', 'k', 'n', 'REG_SZ', 'd'", 15247),
              std::pair("alter server role sysadmin add member [x]]y]", 15247),
              std::pair("create database mine drop database mine", 0)})
            QCOMPARE(errorNumber(*server, batch), number);
        m_server->execute(Sql::script("alter server role dbcreator drop member [x]]y]"));
        QCOMPARE(errorNumber(*m_file->open("d", "x]y"), "create database mine"), 262);
        QCOMPARE(errorNumber(*m_file->open("d", "x]y"), "drop database closed"), 3701);
    }

    void registry() {
        const QString read =
            "declare @v nvarchar(99) exec master.dbo.xp_regread N'HKEY_LOCAL_MACHINE', "
            "N'SOFTWARE\\Microsoft\\MSSQLServer\\MSSQLServer\\', N'DefaultData', @v output select @v";
        QCOMPARE(rowsOf(*m_server, read), "NULL");
        m_server->execute(
            Sql::script("exec master.dbo.xp_regwrite N'HKEY_LOCAL_MACHINE', "
                        "N'SOFTWARE\\Microsoft\\MSSQLServer\\MSSQLServer', N'DefaultData', 'REG_SZ', "
                        "N'C:\\It''s data\\'"));
        QCOMPARE(rowsOf(*m_server, read), "C:\\It's data\\");
        QCOMPARE(
            rowsOf(
                *m_server,
                "select serverproperty('InstanceDefaultDataPath'), serverproperty('InstanceDefaultLogPath')"),
            "C:\\It's data\\|NULL");
    }

    void filesThatAreNoServer() {
        QTemporaryDir folder;
        const QString path = folder.filePath("x y'.db");
        const ConnectionString target{"sa", "secret", {}, "file:" + path};
        const DbError missing = openError(target);
        QCOMPARE(missing.number(), int(DbError::Unreachable));
        QVERIFY(missing.connectionLost());
        QVERIFY(missing.text().contains(path));
        QVERIFY(!QFile::exists(path)); // asking did not make it
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(QByteArray(5000, 'x'));
        file.close();
        QCOMPARE(openError(target).number(), int(DbError::Unreachable));
        QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.close();
        QCOMPARE(openError(target).number(), int(DbError::Unreachable));
        QCOMPARE(errorOf([&] { embedded::EmbeddedServer::create(path, "secret"); }).text().contains("exists"),
                 true);
        QVERIFY(file.remove());
        embedded::EmbeddedServer::create(path, "secret");
        QCOMPARE(rowsOf(*embedded::EmbeddedServer::open(target), "select 1"), "1");
        QVERIFY(file.open(QIODevice::ReadWrite) && file.seek(100)); // behind what tells SQLite's files
        file.write(QByteArray(int(file.size()) - 100, 'x'));
        file.close();
        const DbError damaged = openError(target);
        QCOMPARE(damaged.number(), int(DbError::Unreachable));
        QVERIFY2(damaged.text().contains("damaged"), qPrintable(damaged.text()));
        const DbError inFolder = openError({"sa", "secret", {}, "file:" + folder.path()});
        QVERIFY2(inFolder.text().endsWith("is a folder."), qPrintable(inFolder.text()));
    }

    void theServerGoesAndComesBack() {
#ifdef Q_OS_WIN
        QSKIP("Windows keeps a file that is open where it is.");
#endif
        m_server->execute(Sql::script("insert d.dbo.t (a) values (1)"));
        const QString elsewhere = m_file->path() + ".away";
        QVERIFY(QFile::rename(m_file->path(), elsewhere));
        const DbError gone = errorOf([&] { m_server->execute(Sql::script("select * from d.dbo.t")); });
        QCOMPARE(gone.number(), int(DbError::Unreachable));
        QVERIFY(gone.connectionLost());
        QVERIFY(errorOf([&] { m_server->begin(); }).connectionLost());
        m_server.reset();
        QVERIFY(openError(m_file->target()).connectionLost());
        QVERIFY(QFile::rename(elsewhere, m_file->path()));
        QCOMPARE(rowsOf(*m_file->open("d"), "select a from t"), "1");
    }

    void anotherFileInItsPlace() {
#ifdef Q_OS_WIN
        QSKIP("Windows keeps a file that is open where it is.");
#endif
        ServerFile other;
        QVERIFY(QFile::remove(m_file->path()));
        QVERIFY(QFile::copy(other.path(), m_file->path()));
        QVERIFY(errorOf([&] { m_server->execute(Sql::script("select 1")); }).connectionLost());
    }

    void sessionsSeeEachOthersChanges() {
        const auto other = m_file->open("d");
        QCOMPARE(rowsOf(*other, "select count(*) from t"), "0");
        m_server->execute(
            Sql::script("alter table d.dbo.t add b varchar(5) default 'new' create table d.dbo.u (x int)"));
        QCOMPARE(rowsOf(*other, "insert t (a) values (1) select b from t"), "new");
        QCOMPARE(rowsOf(*other, "select count(*) from u"), "0");
        m_server->execute(Sql::script("drop table d.dbo.u"));
        QCOMPARE(errorNumber(*other, "select * from u"), 208);
        QCOMPARE(errorNumber(*m_server, "use master drop database d"), 3702); // the other one is in it
        QCOMPARE(rowsOf(*other, "use master select db_name()"), "master");
        m_server->execute(Sql::script("drop database d"));
        QCOMPARE(errorNumber(*other, "use d"), 911);
    }

    /// In a file of the previous build columns had no types in SQLite, so that no join could use its index.
    void joinsUseTheirIndexes() {
        m_server->execute(
            Sql::script("use d create table u (a int, [x \"y] bit, n varchar(5)) create index ix on u (a) "
                        "insert t (a) values (1) insert u values (1, 1, '007')"));
        for (const bool former : {false, true}) {
            if (former) {
                m_server.reset();
                embedded::SqliteFile raw(m_file->path(), embedded::SqliteFile::Mode::Existing);
                raw.redeclare({{"d.u", " INTEGER COLLATE T", " COLLATE T"}});
                raw.run(R"(ALTER TABLE "~access" RENAME TO "~denied")");
                raw.run(R"(DELETE FROM "~denied" WHERE allowed)");
                raw.run("PRAGMA application_id = 0x5a455653");
                QCOMPARE(rowsOf(*m_file->open("d", "x]y"), "select has_dbaccess('closed')"), "0");
                m_server = m_file->open("d");
            }
            embedded::SqliteFile file(m_file->path(), embedded::SqliteFile::Mode::Existing);
            embedded::SqliteStatement plan = file.prepare(
                R"(EXPLAIN QUERY PLAN SELECT (SELECT max(n) FROM "d.u" u WHERE u.a = t.id) FROM "d.t" t)");
            QStringList steps;
            while (plan.step()) steps.append(plan.text(3));
            QVERIFY2(steps.last().startsWith("SEARCH u USING INDEX"), qPrintable(steps.join('\n')));
            QCOMPARE(rowsOf(*m_server, "select u.* from t join u on u.a = t.id"), "1|1|007");
        }
    }

    void aTransactionIsSeenWholeOrNotAtAll() {
        const auto other = m_file->open("d");
        m_server->begin();
        m_server->execute(Sql::script("insert d.dbo.t (a) values (1) create table d.dbo.u (x int)"));
        QCOMPARE(rowsOf(*other, "select count(*) from t"), "0");
        QCOMPARE(errorNumber(*other, "select * from u"), 208);
        m_server->rollback();
        QCOMPARE(errorNumber(*m_server, "select * from d.dbo.u"), 208);
        m_server->begin();
        m_server->execute(Sql::script("insert d.dbo.t (a) values (1)"));
        m_server->commit();
        QCOMPARE(rowsOf(*other, "select count(*) from t"), "1");
    }

    void aLockThatCannotBeHad() {
        const auto other = m_file->open("d");
        other->setLockTimeout(50);
        m_server->begin();
        m_server->execute(Sql::script("insert d.dbo.t (a) values (1)"));
        QCOMPARE(errorNumber(*other, "insert t (a) values (2)"), int(DbError::LockTimeout));
        QCOMPARE(errorOf([&] { other->begin(); }).number(), int(DbError::LockTimeout));
        QCOMPARE(rowsOf(*other, "select count(*), @@trancount from t"), "0|0"); // reading goes on
        m_server->commit();
        QCOMPARE(rowsOf(*other, "insert t (a) values (2) select count(*) from t"), "2");
    }

    void noRowIsLostWhenSeveralWrite() {
        constexpr int perWriter = 200;
        std::vector<std::thread> writers;
        writers.reserve(3);
        for (int writer = 0; writer < 3; ++writer)
            writers.emplace_back([this] {
                const auto server = m_file->open("d");
                for (int i = 0; i < perWriter; ++i)
                    server->execute(sql("insert t (a) select count(*) from t"));
            });
        for (std::thread& writer : writers) writer.join();
        // Each insert saw all before it, and no identity value was given twice.
        QCOMPARE(
            rowsOf(*m_server, "select count(*), count(distinct a), count(distinct id), max(id) from d.dbo.t"),
            "600|600|600|600");
    }
};

static const AnnounceTest<ServerFileTest> announced;

#include "ServerFileTest.moc"
