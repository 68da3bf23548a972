#include "addresses/EmailAddress.h"
#include "support/TestClass.h"

#include <QTest>

/// Which e-mail addresses may be entered.
class EmailAddressTest : public QObject {
    Q_OBJECT

private slots:
    void validation() {
        // An ending may be the beginning of a known one; the list of those goes on with a blank behind "zw".
        for (const QString address :
             {"a@b.co", "a@bc.c", "one@two@example.com", "name@@example.com", "name@example.Com",
              "name@example.tV", "name@example.z", "name@example.y", "name@example.zw ", "name@example..com",
              "Μαρία@example.gr", "o'connor@example.ie", "a,b@example.ie"})
            QVERIFY2(isValidEmailAddress(address), qPrintable(address));
        // The first are too short; in the last, "de@x" follows the last full stop.
        for (const QString address :
             {"", "a@b.c", "a@bcd.xq", "a@bcd.x", "name.example.com", "@example.com", "name.com@",
              ".name@example.com", "name@example.com.", "@@example.com", "name@example.comx",
              "name@example.com ", "name@example. com", "name@localhost", "name.de@x"})
            QVERIFY2(!isValidEmailAddress(address), qPrintable(address));
    }
};

static const AnnounceTest<EmailAddressTest> announced;
#include "EmailAddressTest.moc"
