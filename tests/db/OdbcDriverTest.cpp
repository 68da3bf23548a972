#include "db/OdbcDriver.h"
#include "errorOf.h"
#include "support/TestClass.h"

#include <QTest>

namespace {

const char* const Newest = "ODBC Driver 18 for SQL Server";

} // namespace

class OdbcDriverTest : public QObject {
    Q_OBJECT

private slots:
    void theBestDriverIsChosen_data() {
        QTest::addColumn<QStringList>("installed");
        QTest::addColumn<QString>("wanted");
        QTest::addColumn<QString>("chosen"); // empty: refused
        const QString seventeen("ODBC Driver 17 for SQL Server");
        const QString nine("ODBC Driver 9 for SQL Server");
        QTest::newRow("newest") << QStringList{"FreeTDS", nine, Newest, seventeen} << "" << Newest;
        QTest::newRow("FreeTDS") << QStringList{"SQLite3", "FreeTDS"} << ""
                                 << "FreeTDS";
        QTest::newRow("none fits") << QStringList{"SQLite3"} << ""
                                   << "";
        QTest::newRow("named") << QStringList{"FreeTDS", Newest} << "freetds"
                               << "FreeTDS";
        QTest::newRow("missing") << QStringList{"FreeTDS"} << Newest << "";
        QTest::newRow("library") << QStringList{} << "/opt/libtdsodbc.so"
                                 << "/opt/libtdsodbc.so";
    }

    void theBestDriverIsChosen() {
        QFETCH(QStringList, installed);
        QFETCH(QString, wanted);
        QFETCH(QString, chosen);
        QString name;
        const auto error = errorOf<Refusal>([&] { name = OdbcDriver::choose(installed, wanted).name(); });
        QCOMPARE(name, chosen);
        if (error) QVERIFY2(error->text().contains("installed"), qPrintable(error->text()));
    }

    void everyDriverIsToldInItsOwnWords_data() {
        QTest::addColumn<QString>("driver");
        QTest::addColumn<QString>("server");
        QTest::addColumn<QString>("password");
        QTest::addColumn<QString>("expected"); // after DRIVER; empty: refused
        const auto row = [](const char* name, const char* driver, const char* server, const char* password,
                            const char* expected) {
            QTest::newRow(name) << QString(driver) << QString(server) << QString(password)
                                << QString(expected);
        };
        const char* tds = "FreeTDS";
        row("FreeTDS host", tds, "host", "p=' \"x",
            "SERVER=host;PORT=1433;TDS_Version=7.4;ClientCharset=UTF-8;UID=u;PWD=p=' \"x;DATABASE=d");
        row("FreeTDS port", tds, " host , 1500 ", "p",
            "SERVER=host;PORT=1500;TDS_Version=7.4;ClientCharset=UTF-8;UID=u;PWD=p;DATABASE=d");
        row("FreeTDS instance", tds, "host\\i", "p",
            "SERVER=host\\i;TDS_Version=7.4;ClientCharset=UTF-8;UID=u;PWD=p;DATABASE=d");
        row("FreeTDS instance and port", "/lib/libtdsodbc.so", "host\\i,1500", "p",
            "SERVER=host;PORT=1500;TDS_Version=7.4;ClientCharset=UTF-8;UID=u;PWD=p;DATABASE=d");
        row("Microsoft's host", Newest, "host", "p;{x}",
            "SERVER=host;Encrypt=yes;TrustServerCertificate=no;UID={u};PWD={p;{x}}};DATABASE={d}");
        row("Microsoft's port", Newest, "host,1500", "",
            "SERVER=host,1500;Encrypt=yes;TrustServerCertificate=no;UID={u};PWD={};DATABASE={d}");
        row("Microsoft's instance", Newest, "host\\i", "p",
            "SERVER=host\\i;Encrypt=yes;TrustServerCertificate=no;UID={u};PWD={p};DATABASE={d}");
        row("another", "SQLite3", "a,b\\c", "p", "SERVER=a,b\\c;UID=u;PWD=p;DATABASE=d");
        for (const char* bad : {"p;x", "{p", "p}"}) row(bad, tds, "host", bad, "");
        row("another's password", "SQLite3", "host", "p;DATABASE=x", "");
        row("injected", Newest, "host;Encrypt=no", "p", "");
        row("no host", tds, "\\i", "p", "");
        row("no port", tds, "host,abc", "p", "");
        row("port too large", Newest, "host,65536", "p", "");
    }

    void everyDriverIsToldInItsOwnWords() {
        QFETCH(QString, driver);
        QFETCH(QString, server);
        QFETCH(QString, password);
        QFETCH(QString, expected);
        QString text;
        const auto error = errorOf<Refusal>([&] {
            text = OdbcDriver(driver).connectionString({"u", password, "d", server}, {});
        });
        QCOMPARE(text, expected.isEmpty() ? QString() : "DRIVER={" + driver + "};" + expected);
        QCOMPARE(error.has_value(), expected.isEmpty());
        if (error && password.size() > 1) QVERIFY(!error->text().contains(password));
    }

    void encryptionFollowsTheSettings() {
        const QString text = OdbcDriver(Newest).connectionString({"u", "p", "d", "h"}, {"", false, true});
        QVERIFY2(text.contains(";Encrypt=no;TrustServerCertificate=yes;"), qPrintable(text));
    }
};

static const AnnounceTest<OdbcDriverTest> announced;

#include "OdbcDriverTest.moc"
