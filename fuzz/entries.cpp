#include "fuzz/entries.h"

#include "addresses/AddressBook.h"
#include "addresses/AddressImport.h"
#include "app/SecurityFile.h"
#include "db/ColumnText.h"
#include "db/DbError.h"
#include "db/Refusal.h"
#include "embedded/EmbeddedServer.h"
#include "numbers/NumberFile.h"
#include "numbers/NumberTable.h"
#include "templates/TemplateFile.h"

#include <QFile>
#include <QTemporaryDir>
#include <condition_variable>
#include <mutex>
#include <stdexcept>
#include <thread>

namespace fuzz {

namespace {

void require(bool holds, const char* what) {
    if (!holds) throw std::logic_error(what);
}

QString inFolder(const char* name) {
    static const QTemporaryDir folder;
    return folder.filePath(name);
}

QString written(const QByteArray& content) {
    const QString path = inFolder("input");
    QFile file(path);
    require(file.open(QIODevice::WriteOnly) && file.write(content) == content.size(),
            "no room for the input");
    return path;
}

std::unique_ptr<embedded::EmbeddedServer> opened(const QString& path) {
    return embedded::EmbeddedServer::open({"sa", "secret", {}, "file:" + path});
}

/// A server with a little of everything that a script can name.
const QString& pristineServer() {
    static const QString path = [] {
        const QString made = inFolder("pristine.db");
        embedded::EmbeddedServer::create(made, "secret");
        const auto server = opened(made);
        for (const char* batch :
             {"create database d create login visitor with password = 'v'",
              "use d create table t (id int identity primary key, name varchar(10) not null default 'x', "
              "amount money, day datetime, d decimal(5,2), done bit)",
              "insert t (name, amount, day, d) values ('one', 1.5, '20080401', 1), ('Two', 2, null, null)",
              "create table u (a int, n nvarchar(max)) create index ix on u (a) insert u values (1, '007')",
              "create proc p @a int = 1, @b varchar(5) = 'b', @c int output as set @c = @a select @b return "
              "7"})
            server->execute(Sql::script(batch));
        return made;
    }();
    return path;
}

/// Cancels what the server does after a moment, unless it ends before.
class Impatience {
public:
    explicit Impatience(Server& server)
        : m_thread([this, &server] {
              std::unique_lock lock(m_mutex);
              if (!m_over.wait_for(lock, std::chrono::milliseconds(30), [this] { return m_isOver; }))
                  server.cancel();
          }) {}
    ~Impatience() {
        {
            const std::lock_guard lock(m_mutex);
            m_isOver = true;
        }
        m_over.notify_one();
        m_thread.join();
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_over;
    bool m_isOver = false;
    std::thread m_thread; // last, as it uses the others
};

void runBatches(Server& server, const QString& script) {
    const Impatience impatience(server);
    for (const QString& batch : script.split("\nGO\n")) {
        try {
            server.execute(Sql::script(batch));
        } catch (const DbError&) {
            continue;
        }
    }
}

} // namespace

void sql(const QByteArray& script) {
    const QString path = inFolder("server.db");
    QFile::remove(path);
    QFile::copy(pristineServer(), path);
    try {
        const auto server = opened(path);
        server->execute(Sql::script("use d"));
        runBatches(*server, QString::fromUtf8(script));
        server->begin(); // takes the cancelling back
        server->rollback();
        require(server->execute(Sql::script("select 1")).sets.at(0).row(0).text(0) == "1",
                "the session is spoilt");
        opened(path)->execute(Sql::script("select * from master..sysdatabases select * from sysobjects"));
    } catch (const DbError& error) {
        throw std::logic_error("the server is spoilt: " + error.text().toStdString());
    }
}

void numbers(const QByteArray& content) {
    QStringList taken;
    try {
        for (const QString& number : numberFile::read(written(content)))
            if (!holdsLetters(number) && fittingProblem("number", number, 25, CodePage::Latin1252).isEmpty())
                taken << number;
    } catch (const std::runtime_error&) {
        return;
    }
    numberFile::write(inFolder("output"), taken);
    require(numberFile::read(inFolder("output")) == taken, "written numbers do not read back");
}

void addresses(const QByteArray& content) {
    const AddressFile file = readAddressFile(written(content));
    if (!file.hasUsableColumns()) return;
    for (const AddressLayout& layout : layoutsFor(file)) {
        QList<MailEntry> taken;
        for (const ImportRow& row :
             mapLines(file, layout, {"ACC", "CC", "1", "a@example.com"}, {}, [](qsizetype) {}))
            if (row.status == ImportRow::New) taken << row.entry;
        const QString output = inFolder("output");
        writeAddressFile(output, taken);
        const AddressFile back = readAddressFile(output);
        QList<MailEntry> read;
        for (const AddressLine& line : back.lines)
            read << MailEntry{line.fields.value(0), line.fields.value(1), line.fields.value(2),
                              line.fields.value(3)};
        require(read == taken, "written addresses do not read back");
    }
}

void templates(const QByteArray& content) {
    QList<FiledTemplate> read;
    try {
        read = templateFile::read(content);
    } catch (const Refusal&) {
        return;
    }
    const QByteArray document = templateFile::write(read);
    require(templateFile::write(templateFile::read(document)) == document,
            "written templates do not read back");
}

void security(const QByteArray& content) {
    const auto password = ReadPasswordFromEncryptedSSSfile(written(content));
    if (!password) return;
    const QString output = inFolder("output");
    WriteEncryptedSSSfile(output, *password);
    require(ReadPasswordFromEncryptedSSSfile(output) == password, "a written password does not read back");
}

} // namespace fuzz
