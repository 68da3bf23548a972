#include "addresses/EmailAddress.h"
#include "support/TestClass.h"

#include <QTest>

/// Which e-mail addresses may be entered.
class EmailAddressTest : public QObject {
    Q_OBJECT

private slots:
    void validation_data() {
        QTest::addColumn<QString>("address");
        QTest::addColumn<bool>("valid");
        const auto row = [](const char* address, bool valid) {
            QTest::newRow(address) << QString::fromUtf8(address) << valid;
        };
        row("", false);
        row("a@b.c", false); // too short
        row("a@b.co", true);
        row("a@bc.c", true); // begins .CA
        row("a@bcd.xq", false);
        row("a@bcd.x", false);
        row("name.example.com", false);
        row("@example.com", false);
        row("name.com@", false);
        row(".name@example.com", false);
        row("name@example.com.", false);
        row("one@two@example.com", true);
        row("name@@example.com", true);
        row("@@example.com", false);
        row("name@example.Com", true);
        row("name@example.tV", true);
        row("name@example.info", false);
        row("name@example.comx", false);
        row("name@example.zw", true);
        row("name@example.z", true);
        row("name@example.q", true);
        row("name@example.w", true);
        row("name@example.y", true);
        row("name@example.x", false);
        row("name@example.zw ", true); // the list goes on with a blank there
        row("name@example.com ", false);
        row("name@example. com", false);
        row("name@example..com", true);
        row("name@localhost", false);
        row("name.x@localhost", false);
        row("name.de@x", false); // "de@x" follows the last full stop
        row("Μαρία@example.gr", true);
        row("o'connor@example.ie", true);
        row("a,b@example.ie", true);
    }

    void validation() {
        QFETCH(const QString, address);
        QFETCH(const bool, valid);
        QCOMPARE(isValidEmailAddress(address), valid);
    }

    void everyEndingIsKnown() {
        const QStringList endings =
            QString("com edu gov net biz org tv af uk us ie de zw eh yu cs su").split(' ');
        for (const QString& ending : endings)
            QVERIFY2(isValidEmailAddress("name@example." + ending), qPrintable(ending));
    }
};

static const AnnounceTest<EmailAddressTest> announced;
#include "EmailAddressTest.moc"
