#include "addresses/AddressBook.h"
#include "addresses/AddressImport.h"
#include "addresses/EmailAddress.h"
#include "support/Files.h"
#include "support/Rows.h"
#include "support/TestClass.h"

#include <QTemporaryDir>
#include <stdexcept>

/// Which addresses are valid; CSV files of them: what they hold, and that what is written reads back.
class AddressFileTest : public QObject {
    Q_OBJECT

    QTemporaryDir m_folder;

    QString write(const QByteArray& content) {
        const QString path = m_folder.filePath("file.csv");
        writeFile(path, content);
        return path;
    }
    static QString inWords(const ImportRow& row) {
        const QString status = QStringList{"new", "known", "refused", "level", "unreadable"}[int(row.status)];
        return QString("%1 %2: %3|%4|%5|%6")
            .arg(row.line)
            .arg(status, row.entry.billAccount, row.entry.costCentre, row.levelText, row.entry.emailAddress);
    }
    /// What becomes of a file's lines, under its most likely layout.
    static QStringList imported(const QString& path, const AddressBook& book = {}) {
        const AddressFile file = readAddressFile(path);
        if (!file.hasUsableColumns()) return {"unusable"};
        QStringList rows;
        for (const ImportRow& row :
             mapLines(file, layoutsFor(file).first(), {"ACC", {}, "3", {}}, book, [](qsizetype) {}))
            rows << inWords(row);
        return rows;
    }

private slots:
    void validity() {
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

    void reading_data() {
        const Rows<QByteArray, QStringList> row;
        row("empty", "", {"unusable"});
        row("five columns", "A,B,1,x@example.com,\nA,B,1,x@example.com\n", {"unusable"});
        row("semicolons", "B;x@example.com\n", {"unusable"});
        row("two columns", "Finance,x@example.com", {"1 new: ACC|Finance|3|x@example.com"});
        row("two, address first", "x@example.com,Finance", {"1 new: ACC|Finance|3|x@example.com"});
        row("three, with level", "Finance,2,x@example.com", {"1 new: ACC|Finance|2|x@example.com"});
        row("three, level last", "Finance,x@example.com,2", {"1 new: ACC|Finance|2|x@example.com"});
        row("three, with account", "BW,Finance,x@example.com", {"1 new: BW|Finance|3|x@example.com"});
        row("four", "BW,Finance,2,x@example.com", {"1 new: BW|Finance|2|x@example.com"});
        row("four, as stored", "BW,Finance,x@example.com,2", {"1 new: BW|Finance|2|x@example.com"});
        row("four, level second", "BW,2,Finance,x@example.com", {"1 new: BW|Finance|2|x@example.com"});
        row("heading", "E-mail,Level,Cost Center,Account no\nx@example.com,4,Finance,BW",
            {"2 new: BW|Finance|4|x@example.com"});
        row("heading of other words", "Kostenstelle,Adresse\nFinance,x@example.com",
            {"2 new: ACC|Finance|3|x@example.com"});
        row("no heading", "BW,Finance,1,nobody\nBW,Sales,2,x@example.com",
            {"1 refused: BW|Finance|1|nobody", "2 new: BW|Sales|2|x@example.com"});
        row("line ends", "\xef\xbb\xbf\r\nA,x@example.com\r\n\r\n  \r\n,\nB,x@example.com\rC,x@example.com",
            {"2 new: ACC|A|3|x@example.com", "6 new: ACC|B|3|x@example.com", "7 new: ACC|C|3|x@example.com"});
        row("UTF-8", "Büro Ω,x@example.com", {"1 new: ACC|Büro Ω|3|x@example.com"});
        row("UTF-16",
            QByteArray("\xff\xfe"
                       "B\0\xfc\0,\0x\0@\0y\0.\0i\0e\0\r\0\n\0",
                       22),
            {"1 new: ACC|Bü|3|x@y.ie"});
        row("Windows text", "B\xfcro \x80 \x96,x@example.com", {"1 new: ACC|Büro € –|3|x@example.com"});
        row("blanks around", " A B , x@example.com ", {"1 new: ACC|A B|3|x@example.com"});
        row("quoted", "\"A, \"\"B\"\"\",x@example.com\nIT \"Blue\" Team,x@example.com",
            {"1 new: ACC|A, \"B\"|3|x@example.com", "2 new: ACC|IT \"Blue\" Team|3|x@example.com"});
        row("quote not closed", "A,x@example.com\n\"B,y@example.com",
            {"1 new: ACC|A|3|x@example.com", "2 unreadable: ACC||3|"});
        row("another width", "A,x@example.com\nB,2,y@example.com",
            {"1 new: ACC|A|3|x@example.com", "2 unreadable: ACC|B|3|2"});
        row("levels",
            "A,1,x@example.com\nA,0,x@example.com\nA,6,x@example.com\nA,-1,x@example.com\nA,two,x@example."
            "com\n"
            "A,,x@example.com\nA,99999999999,x@example.com\nA,02,x@example.com",
            {"1 new: ACC|A|1|x@example.com", "2 level: ACC|A|0|x@example.com",
             "3 level: ACC|A|6|x@example.com", "4 level: ACC|A|-1|x@example.com",
             "5 unreadable: ACC|A|two|x@example.com", "6 unreadable: ACC|A||x@example.com",
             "7 level: ACC|A|99999999999|x@example.com", "8 new: ACC|A|02|x@example.com"});
        row("twice", "A,x@example.com\na,X@EXAMPLE.COM",
            {"1 new: ACC|A|3|x@example.com", "2 known: ACC|a|3|X@EXAMPLE.COM"});
        row("refused",
            QByteArray("A,nobody\nA,x@example.com\n,x@example.com\nA,\nA,nobody\n") + QByteArray(31, 'c')
                + ",x@example.com\nA\tB,x@example.com\n",
            {"2 new: ACC|A|3|x@example.com", "3 refused: ACC||3|x@example.com", "4 refused: ACC|A|3|",
             "5 refused: ACC|A|3|nobody", "6 refused: ACC|" + QString(31, 'c') + "|3|x@example.com",
             "7 refused: ACC|A\tB|3|x@example.com"});
        row("NUL", QByteArray("A\0B,x@example.com", 17),
            {QString("1 refused: ACC|A") + QChar(u'\0') + "B|3|x@example.com"});
    }

    void reading() {
        const auto [content, rows] = thisRow<QByteArray, QStringList>();
        QCOMPARE(imported(write(content)), rows);
    }

    void knownInTheBook() {
        AddressBook book;
        book.AddEntrytoGrid({"acc", "FINANCE ", "3", "x@example.com"});
        const int twin = book.AddEntrytoGrid({"ACC", "Finance", "3", "x@example.com"});
        const QString path = write("Finance,x@example.com\nFinance,y@example.com");
        const QStringList rows{"1 known: ACC|Finance|3|x@example.com", "2 new: ACC|Finance|3|y@example.com"};
        QCOMPARE(imported(path, book), rows);
        book.remove(twin); // its twin is still there
        QCOMPARE(imported(path, book), rows);
    }

    void whatIsWrittenReadsBack() {
        const QList<MailEntry> entries{{"BW10023", "Engineers' Yard", "2", "m.o'connor@example.ie"},
                                       {"BW10023", "O'Connell, \"Street\" 'Shop'", "5", "a@b@example.com"},
                                       {"BW10023", "IT \"Blue\" Team", "2", "it@example.com"},
                                       {"BW10023", "\"Blue\"", "2", "it@example.com"},
                                       {"BW10023", "two\nlines", "2", "it@example.com"},
                                       {"BW10023", "a comma, here", "2", "it@example.com"},
                                       {"BW10023", "level", "7", "it@example.com"},
                                       {"", "no account", "1", "it@example.com"},
                                       {"BW10023", " blank ", "1", "it@example.com"},
                                       {"BW10023", "no address", "1", "it"},
                                       {"BÜ1", "Αθήνα", "1", "it@example.com"},
                                       {"=A1", "'=B1, C1", "1", "+it@example.com"}};
        QList<MailEntry> writable;
        QStringList centres;
        for (const MailEntry& entry : entries) {
            if (!survivesExport(entry)) continue;
            writable << entry;
            centres << entry.costCentre;
        }
        QCOMPARE(centres, (QStringList{"Engineers' Yard", "O'Connell, \"Street\" 'Shop'", "IT \"Blue\" Team",
                                       "\"Blue\"", "a comma, here", " blank ", "Αθήνα", "'=B1, C1"}));
        const QString path = m_folder.filePath("export.csv");
        writeAddressFile(path, writable);
        QVERIFY(readFile(path).contains("BW10023,Engineers' Yard,2,m.o'connor@example.ie\r\n"));
        QVERIFY(readFile(path).endsWith("'=A1,\"''=B1, C1\",1,'+it@example.com\r\n"));
        const AddressFile file = readAddressFile(path);
        QList<MailEntry> read;
        for (const ImportRow& row : mapLines(file, layoutsFor(file).first(), {}, {}, [](qsizetype) {}))
            read << row.entry;
        QCOMPARE(read, writable);
        QVERIFY_EXCEPTION_THROWN(writeAddressFile(m_folder.path(), writable), std::runtime_error);
        QVERIFY_EXCEPTION_THROWN(readAddressFile(m_folder.path()), std::runtime_error);
    }
};

static const AnnounceTest<AddressFileTest> announced;
#include "AddressFileTest.moc"
