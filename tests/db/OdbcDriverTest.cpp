#include "db/OdbcDriver.h"
#include "errorOf.h"
#include "support/Rows.h"
#include "support/TestClass.h"

namespace {

const char* const Newest = "ODBC Driver 18 for SQL Server";

} // namespace

class OdbcDriverTest : public QObject {
    Q_OBJECT

private slots:
    void theBestDriverIsChosen_data() {
        const Rows<QStringList, QString, QString> row; // the last is what is chosen; empty: refused
        const QString seventeen("ODBC Driver 17 for SQL Server");
        const QString nine("ODBC Driver 9 for SQL Server");
        row("newest", {"FreeTDS", nine, Newest, seventeen}, "", Newest);
        row("FreeTDS", {"SQLite3", "FreeTDS"}, "", "FreeTDS");
        row("none fits", {"SQLite3"}, "", "");
        row("of Windows", {"SQL Server", "SQLite3"}, "", "SQL Server");
        row("rather not of Windows", {"SQL Server", "FreeTDS"}, "", "FreeTDS");
        row("named", {"FreeTDS", Newest}, "freetds", "FreeTDS");
        row("missing", {"FreeTDS"}, Newest, "");
        row("library", {}, "/opt/libtdsodbc.so", "/opt/libtdsodbc.so");
    }

    void theBestDriverIsChosen() {
        const auto [installed, wanted, chosen] = thisRow<QStringList, QString, QString>();
        QString name;
        const auto error = errorOf<Refusal>([&] { name = OdbcDriver::choose(installed, wanted).name(); });
        QCOMPARE(name, chosen);
        if (error) QVERIFY2(error->text().contains("installed"), qPrintable(error->text()));
    }

    void everyDriverIsToldInItsOwnWords_data() {
        const Rows<QString, QString, QString, QString> row; // the last after DRIVER; empty: refused
        const char* tds = "FreeTDS";
        row("FreeTDS host", tds, "host", "p=' \"x",
            "SERVER=host;PORT=1433;Encryption=require;TDS_Version=7.4;ClientCharset=UTF-8;UID=u;PWD=p=' "
            "\"x;DATABASE=d");
        row("FreeTDS port", tds, " host , 1500 ", "p",
            "SERVER=host;PORT=1500;Encryption=require;TDS_Version=7.4;ClientCharset=UTF-8;UID=u;PWD=p;"
            "DATABASE=d");
        row("FreeTDS instance", tds, "host\\i", "p",
            "SERVER=host\\i;Encryption=require;TDS_Version=7.4;ClientCharset=UTF-8;UID=u;PWD=p;DATABASE=d");
        row("FreeTDS instance and port", "/lib/libtdsodbc.so", "host\\i,1500", "p",
            "SERVER=host;PORT=1500;Encryption=require;TDS_Version=7.4;ClientCharset=UTF-8;UID=u;PWD=p;"
            "DATABASE=d");
        row("Microsoft's host", Newest, "host", "p;{x}",
            "SERVER=host;Encrypt=yes;TrustServerCertificate=no;UID={u};PWD={p;{x}}};DATABASE={d}");
        row("Microsoft's port", Newest, "host,1500", "",
            "SERVER=host,1500;Encrypt=yes;TrustServerCertificate=no;UID={u};PWD={};DATABASE={d}");
        row("Microsoft's instance", Newest, "host\\i", "p",
            "SERVER=host\\i;Encrypt=yes;TrustServerCertificate=no;UID={u};PWD={p};DATABASE={d}");
        row("of Windows", "SQL Server", "host\\i", "p", "SERVER=host\\i;Encrypt=yes;UID=u;PWD=p;DATABASE=d");
        row("another", "SQLite3", "a,b\\c", "p", "SERVER=a,b\\c;UID=u;PWD=p;DATABASE=d");
        for (const char* bad : {"p;x", "{p", "p}"}) row(bad, tds, "host", bad, "");
        row("another's password", "SQLite3", "host", "p;DATABASE=x", "");
        row("injected", Newest, "host;Encrypt=no", "p", "");
        row("no host", tds, "\\i", "p", "");
        row("no port", tds, "host,abc", "p", "");
        row("port too large", Newest, "host,65536", "p", "");
    }

    void everyDriverIsToldInItsOwnWords() {
        const auto [driver, server, password, expected] = thisRow<QString, QString, QString, QString>();
        const ConnectionString target{"u", password, "d", server};
        QString text;
        const auto error = errorOf<Refusal>([&] { text = OdbcDriver(driver).connectionString(target, {}); });
        QCOMPARE(text, expected.isEmpty() ? QString() : "DRIVER={" + driver + "};" + expected);
        QCOMPARE(error.has_value(), expected.isEmpty());
        if (error && password.size() > 1) QVERIFY(!error->text().contains(password));
    }

    void encryptionFollowsTheSettings() {
        const QString text = OdbcDriver(Newest).connectionString(
            {"u", "p", "d", "h"}, {.encrypt = OdbcSettings::No, .trustServerCertificate = true});
        QVERIFY2(text.contains(";Encrypt=no;TrustServerCertificate=yes;"), qPrintable(text));
        const OdbcSettings section{.encrypt = OdbcSettings::No, .freetdsConf = true};
        const QString tds = OdbcDriver("FreeTDS").connectionString({"u", "p", "d", " reports "}, section);
        QVERIFY2(tds.contains("SERVERNAME=reports;Encryption=request;") && !tds.contains("PORT"),
                 qPrintable(tds));
    }

    void whatADriverDoesNotDoIsTold_data() {
        const Rows<QString, OdbcSettings, QString> row;
        row("FreeTDS", "FreeTDS", {}, "only when freetds.conf names it");
        row("FreeTDS with its file", "FreeTDS", {.freetdsConf = true}, "");
        row("FreeTDS, any certificate", "FreeTDS", {.trustServerCertificate = true}, "");
        row("of Windows", "SQL Server", {}, "out of date");
        row("Microsoft's", Newest, {}, "");
        row("another", "SQLite3", {}, "not told to encrypt");
    }

    void whatADriverDoesNotDoIsTold() {
        const auto [driver, settings, words] = thisRow<QString, OdbcSettings, QString>();
        const QString told = OdbcDriver(driver).shortcoming(settings);
        QVERIFY2(words.isEmpty() ? told.isEmpty() : told.contains(words), qPrintable(told));
    }
};

static const AnnounceTest<OdbcDriverTest> announced;

#include "OdbcDriverTest.moc"
