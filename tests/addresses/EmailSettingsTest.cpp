#include "addresses/BookOffice.h"
#include "addresses/frmEmailSettings.h"
#include "addresses/frmMailImport.h"
#include "addresses/frmMailSelection.h"
#include "base/MailOptions.h"
#include "demo/BulkInsert.h"
#include "support/Modal.h"
#include "support/Rows.h"
#include "support/TestClass.h"
#include "ui/uctListView.h"

#include <QComboBox>
#include <QLabel>
#include <QSpinBox>

/// The e-mail address book as its user works on it.
class EmailSettingsTest : public QObject {
    Q_OBJECT

    struct Book {
        BookOffice office;
        frmEmailSettings screen;

        explicit Book(const QString& user = Session::serverLoginName)
            : office(user), screen(office.program.context) {
            if (screen.Setup() != 0) qFatal("no address book");
            screen.show();
        }
        uctListView& grid() { return child<uctListView>(screen, "MSFlexGrid1"); }
        QStringList column(int place) { return texts(grid(), place); }
        void select(const QString& costCentre) {
            const QModelIndex found = grid().model()->index(int(column(1).indexOf(costCentre)), 0);
            grid().selectionModel()->select(found, QItemSelectionModel::Select | QItemSelectionModel::Rows);
        }
        void press(const char* button) { ::press(screen, button); }
        ScriptedMessages& messages() { return office.program.messages; }
    };

private slots:
    void savedAsShown() {
        Book book;
        book.office.db().execute(
            sql("INSERT INTO NorvaScheduler.dbo.tblMailAddresses VALUES (N'A''B', N'x''y', "
                "N'q''r@example.ie', 1)"));
        book.office.db().execute( // what an older program left
            sql("INSERT INTO NorvaScheduler.dbo.tblMailAddresses VALUES (N'BW', N'', N'nobody', 'n/a')"));
        QCOMPARE(book.screen.Setup(), 0);
        const QStringList before = book.office.storedBook();
        QCOMPARE(book.column(0).size(), before.size());
        QVERIFY(!child(book.screen, "cmdSave").isEnabled());
        QTest::keyClick(&book.grid(), Qt::Key_Delete);
        QCOMPARE(book.office.shown(), QStringList{"Please select an entry to delete."});
        book.select("Warehouse");
        book.messages().answer(true);
        QTest::keyClick(&book.grid(), Qt::Key_Delete);
        QCOMPARE(
            book.office.shown(),
            QStringList{
                "Do you wish to delete the address warehouse@brightwater.example.com for the Cost Centre "
                "entry Warehouse?"});
        book.press("cmdSave");
        QCOMPARE(book.office.shown(), QStringList{"Changes have been saved."});
        QVERIFY(!book.screen.CheckSaveState());
        QStringList after = before;
        QVERIFY(after.removeOne("BW10023|Warehouse|warehouse@brightwater.example.com|2"));
        QCOMPARE(book.office.storedBook(), after);
        QVERIFY(after.contains("A'B|x'y|q'r@example.ie|1") && after.contains("BW||nobody|n/a"));
    }

    void severalAreDeletedAndLeftUnsaved() {
        Book book;
        const QStringList before = book.office.storedBook();
        book.select("Finance");
        book.select("Warehouse");
        book.messages().answer(true);
        book.press("cmdDelete");
        QCOMPARE(book.office.shown(), QStringList{"Do you wish to delete the 2 selected addresses?"});
        book.messages().answer(false);
        book.press("cmdExit");
        QVERIFY(book.screen.isVisible());
        book.messages().answer(true);
        book.press("cmdExit");
        QVERIFY(!book.screen.isVisible());
        QCOMPARE(book.office.shown().last(),
                 QString("Are you sure you want to exit and cancel your changes?"));
        QCOMPARE(book.office.storedBook(), before);
    }

    void addingAnEntry() {
        Book book;
        inNextModal<frmMailSelection>([&](frmMailSelection& screen) {
            const auto add = [&](const QString& address) {
                child<QLineEdit>(screen, "txtEmail").setText(address);
                QTest::keyClick(&child(screen, "txtEmail"), Qt::Key_Return);
                return book.office.shown();
            };
            auto& centres = child<uctListView>(screen, "lstCentres");
            QCOMPARE(add("x@example.com"), QStringList{"You must Select a Cost Centre."});
            QCOMPARE(centres.model()->rowCount(), 6);
            QCOMPARE(centres.textOf(5, 0), QString("No Cost Centre allocated"));
            QCOMPARE(centres.textOf(0, 0), QString("Children's Services"));
            QVERIFY(centres.selectId(0));
            QCOMPARE(add(" "), QStringList{"You must enter an Email Address."});
            QCOMPARE(add("x@y"), QStringList{"You must enter a valid Email Address."});
            QCOMPARE(add(" x@example.com "), QStringList{"Entry has been added to Email List."});
            QCOMPARE(
                add("X@Example.com"),
                QStringList{"This cost centre already has the e-mail address X@Example.com assigned to it."});
            QCOMPARE(add(QString(250, 'x') + "@a.com").size(), 1);
            auto& level = child<QComboBox>(screen, "cmbLevel");
            level.setCurrentIndex(4);
            emit level.activated(4);
            QCOMPARE(centres.model()->rowCount(), 1);
            // Centres of the former level must not be added to one whose own cannot be read.
            QVERIFY(centres.selectId(0));
            book.office.program.fault.arm(1);
            emit level.activated(4);
            book.office.program.fault.arm(0);
            QCOMPARE(book.office.shown(), QStringList{"Made to fail."});
            QCOMPARE(add("x@example.com"), QStringList{"You must Select a Cost Centre."});
            book.messages().answer(false); // the address in the box was not added
            press(screen, "cmdClose");
            book.messages().answer(true);
            press(screen, "cmdClose");
        });
        book.press("cmdAdd");
        QVERIFY(book.column(1).contains("Children's Services"));
        book.press("cmdSave");
        QVERIFY(book.office.storedBook().contains("BW10023|Children's Services|x@example.com|1"));
    }

    void importing() {
        Book book;
        const QString path = book.office.file("Bill Account,Cost Centre,CC Level,Email Address\r\n"
                                              "BW10023,Finance,1,FINANCE@brightwater.example.com\r\n"
                                              "BW10023,O'Hara's,2,o'hara@example.ie\r\n"
                                              "BW10023,Nobody,2,nobody\r\n");
        book.messages().pick(path);
        inNextModal<frmMailImport>([&](frmMailImport& screen) {
            press(screen, "cmdOpen");
            auto& preview = child<uctListView>(screen, "lstPreview");
            QCOMPARE(preview.textOf(2, 5), QString("Known: It is in the address book already."));
            QCOMPARE(preview.textOf(3, 5), QString("New"));
            QCOMPARE(preview.textOf(4, 5), QString("Refused: The e-mail address is not valid."));
            QVERIFY(child<QLabel>(screen, "lblSummary").text().startsWith("1 new, 1 known, 1 refused"));
            press(screen, "cmdImport");
        });
        book.press("cmdImport");
        QCOMPARE(book.office.shown(), QStringList{"1 new address has been added to the grid."});
        QCOMPARE(
            book.messages().lastDetails(),
            QString("1 address known already.\n1 address refused:\nLine 4: The e-mail address is not valid.\n"
                    "The first line was taken for a heading."));
        QVERIFY(book.column(3).contains("o'hara@example.ie"));
        QVERIFY(book.screen.CheckSaveState());
    }

    void importsThatAreStopped_data() {
        const Rows<QByteArray, QString> row;
        row("five columns", QByteArray("a,b,c,d,e@example.com\nA,x@example.com"),
            "This file is Invalid.  The file must contain at least two columns and be comma separated.");
        for (const char* level : {"0", "6"})
            row(level, QByteArray("A,1,x@example.com\nA,") + level + ",x@example.com",
                "This import has been stopped.\nCost Centre levels should be between 1 and 5");
        row("not mapped", QByteArray("A,x@example.com\nB,1,2,x@example.com"),
            "There is an error with the data being imported.");
    }

    void importsThatAreStopped() {
        const auto [content, message] = thisRow<QByteArray, QString>();
        BookOffice office;
        AddressBook book;
        frmMailImport screen(office.program.context);
        screen.Setup(book);
        screen.show();
        office.program.messages.pick(office.file(content));
        press(screen, "cmdOpen");
        QCOMPARE(office.shown(), QStringList{message});
        press(screen, "cmdImport");
        QVERIFY(book.entries().isEmpty());
        QVERIFY(screen.isVisible());
    }

    void filesThatCannotBeRead() {
        BookOffice office;
        AddressBook book;
        frmMailImport screen(office.program.context);
        screen.Setup(book);
        auto& file = child<QLineEdit>(screen, "txtFile");
        file.setText(office.file("Finance,x@example.com\n"));
        QTest::keyClick(&file, Qt::Key_Return);
        QVERIFY(child(screen, "cmdImport").isEnabled());
        file.setText(office.folder.filePath("nothing.csv"));
        QTest::keyClick(&file, Qt::Key_Return);
        QCOMPARE(office.shown(), QStringList{"File not found."});
        QVERIFY(!child(screen, "cmdImport").isEnabled()); // what the former file held is not to be added
        QCOMPARE(child<uctListView>(screen, "lstPreview").model()->rowCount(), 0);
        if (QFile("/proc/self/mem").exists()) { // there, but not to be read
            file.setText("/proc/self/mem");
            QTest::keyClick(&file, Qt::Key_Return);
            QCOMPARE(office.shown(), QStringList{"Error importing data.  See error log."});
            QVERIFY(readFile(office.program.session.log.path()).contains("frmmailimport.cmdimport"));
        }
    }

    void theAccountAndLevelThatTheFileOmits() {
        BookOffice office("QuorraAdmin", "");
        AddressBook book;
        frmMailImport screen(office.program.context);
        screen.Setup(book);
        office.program.messages.pick(office.file("Finance,x@example.com"));
        press(screen, "cmdOpen");
        QCOMPARE(child<QLabel>(screen, "lblSummary").text(), QString("0 new, 0 known, 1 refused"));
        child<QLineEdit>(screen, "txtAccount").setText("HL20417");
        child<QComboBox>(screen, "cmbLevel").setCurrentIndex(2);
        press(screen, "cmdImport");
        QCOMPARE(book.list(), (QList<MailEntry>{{"HL20417", "Finance", "3", "x@example.com"}}));
    }

    void exporting() {
        Book book;
        const QString path = book.office.folder.filePath("out");
        book.messages().pick("");
        book.press("cmdExport");
        QCOMPARE(book.office.shown(), QStringList{"Export cancelled."});
        book.messages().pick(path);
        book.press("cmdExport");
        QCOMPARE(book.office.shown(), QStringList{"5 addresses have been exported to the file."});
        book.messages().pick(path + ".csv");
        book.messages().answer(false);
        book.press("cmdExport");
        QCOMPARE(book.office.shown(), QStringList{"File already exists, do you want to continue?"});

        book.grid().selectAll(); // what was exported comes back
        book.messages().answer(true);
        book.press("cmdDelete");
        book.office.shown();
        book.press("cmdExport");
        QCOMPARE(book.office.shown(), QStringList{"No addresses found to export."});
        book.messages().pick(path + ".csv");
        inNextModal<frmMailImport>([](frmMailImport& screen) {
            press(screen, "cmdOpen");
            press(screen, "cmdImport");
        });
        book.press("cmdImport");
        const QStringList before = book.office.storedBook();
        book.press("cmdSave");
        QCOMPARE(book.office.shown().last(), QString("Changes have been saved."));
        QCOMPARE(book.office.storedBook(), before);
    }

    void exportNamesWhatWouldNotReadBack() {
        Book book;
        book.office.db().execute(
            sql("INSERT INTO NorvaScheduler.dbo.tblMailAddresses VALUES (N'BW', N'Salt, Pepper', "
                "N'x@example.com', 7), (N'BW', N'Salt, Pepper', N'y@example.com', 1)"));
        QCOMPARE(book.screen.Setup(), 0);
        book.messages().answer(true);
        book.messages().pick(book.office.folder.filePath("out.csv"));
        book.press("cmdExport");
        const QStringList shown = book.office.shown();
        QVERIFY(shown.first().contains("BW, Salt, Pepper, level 7, x@example.com")
                && !shown.first().contains("y@example.com"));
        QCOMPARE(shown.last(), QString("6 addresses have been exported to the file."));
    }

    void anotherUserChangesTheBook() {
        Book book;
        book.select("Finance");
        book.messages().answer(true);
        book.press("cmdDelete");
        book.office.db().execute(
            sql("DELETE FROM NorvaScheduler.dbo.tblMailAddresses WHERE CostCentre = N'Warehouse'"));
        book.office.db().execute(sql("INSERT INTO NorvaScheduler.dbo.tblMailAddresses VALUES (N'BW10023', "
                                     "N'Payroll', N'pay@example.com', 2)"));
        const QStringList theirs = book.office.storedBook();
        book.office.shown();
        book.messages().answer(false);
        book.press("cmdSave");
        const QString question = book.office.shown().join("");
        QVERIFY2(question.contains("+ BW10023, Payroll, level 2, pay@example.com"), qPrintable(question));
        QVERIFY2(question.contains("- BW10023, Warehouse, level 2, warehouse@brightwater.example.com"),
                 qPrintable(question));
        QCOMPARE(book.office.storedBook(), theirs);
        QVERIFY(book.screen.CheckSaveState());
        book.messages().answer(true);
        book.press("cmdSave");
        QCOMPARE(book.office.shown().last(), QString("Changes have been saved."));
        QVERIFY(!book.office.storedBook().join("").contains("Payroll"));
        QVERIFY(book.office.storedBook().join("").contains("Warehouse"));
    }

    /// Whatever step fails, before or after the server has done it, the stored book is the old or the
    /// new one and the screen still holds the user's.
    void noFailureLosesTheBook_data() {
        const Rows<bool, bool> row;
        row("before", false, false);
        row("after", true, false);
        row("connection lost before", false, true);
        row("connection lost after", true, true);
    }

    void noFailureLosesTheBook() {
        const auto [after, lost] = thisRow<bool, bool>();
        Book book;
        Fault& fault = book.office.program.fault;
        BulkInsert more(book.office.db(),
                        sql("INSERT INTO NorvaScheduler.dbo.tblMailAddresses VALUES")); // more than a batch
        for (int i = 0; i < 700; ++i)
            more.add(QString("BW10023"), QString("Centre %1").arg(i), QString("c%1@example.com").arg(i),
                     QString("1"));
        more.finish();
        QCOMPARE(book.screen.Setup(), 0);
        const QStringList old = book.office.storedBook();
        book.select("Warehouse");
        book.messages().answer(true);
        book.press("cmdDelete");
        child<QLineEdit>(book.screen, "txtDefaultEmail").setText("new@example.com");
        QStringList wanted = old;
        wanted.removeOne("BW10023|Warehouse|warehouse@brightwater.example.com|2");
        book.office.shown();
        fault.after = after;
        fault.lost = lost;
        int failures = 0;
        for (int step = 1;; ++step) {
            fault.arm(step);
            book.press("cmdSave");
            const bool failed = fault.taken >= step;
            const QString said = book.office.shown().join("");
            const QStringList stored = book.office.storedBook();
            fault.arm(0);
            const bool isNew = stored == wanted;
            QVERIFY2(stored == old || isNew, qPrintable(stored.join("\n")));
            QCOMPARE(readDefaultEmail(book.office.db()) == "new@example.com", isNew);
            QCOMPARE(book.column(1).size(), wanted.size());
            QVERIFY(book.screen.isVisible());
            if (said == "Changes have been saved.") break;
            ++failures;
            QVERIFY(failed && book.screen.CheckSaveState());
            if (isNew) { // the answer to the commit got lost
                book.press("cmdSave");
                QCOMPARE(book.office.shown(), QStringList{"Changes have been saved."});
                break;
            }
        }
        QVERIFY(failures >= 6);
        QVERIFY(book.office.storedBook() == wanted);
    }

    void optionsOfAnOlderDatabase() {
        BookOffice office;
        office.db().execute(sql("ALTER TABLE NorvaScheduler.dbo.tblOptions DROP COLUMN DefaultEmail"));
        office.db().execute(sql("ALTER TABLE NorvaScheduler.dbo.tblOptions DROP COLUMN MaxFileSize"));
        QCOMPARE(GetMaxFileSizeDesc(office.db()), QString("Unlimited"));
        frmEmailSettings screen(office.program.context);
        QCOMPARE(screen.Setup(), 0);
        auto& address = child<QLineEdit>(screen, "txtDefaultEmail");
        QVERIFY(address.text().isEmpty());
        address.setText("nobody");
        press(screen, "cmdSave");
        QCOMPARE(office.shown(), QStringList{"You must enter a valid Email Address."});
        address.setText("o'dowd@example.ie");
        child<QSpinBox>(screen, "numMaxFileSize").setValue(25);
        for (int round = 0; round < 2; ++round) { // the columns are there the second time
            press(screen, "cmdSave");
            QCOMPARE(office.shown(), QStringList{"Changes have been saved."});
            child<QSpinBox>(screen, "numMaxFileSize").setValue(26);
        }
        QCOMPARE(readDefaultEmail(office.db()), QString("o'dowd@example.ie"));
        QCOMPARE(GetMaxFileSizeDesc(office.db()), QString("26 MB"));
        office.db().execute(sql("DELETE FROM NorvaScheduler.dbo.tblOptions"));
        saveMailOptions(office.db(), "x@example.com", 0);
        QCOMPARE(readDefaultEmail(office.db()), QString("x@example.com"));
    }

    void onlyLevelOneChangesTheOptions() {
        Book book("Tom.Becker");
        QVERIFY(child<QLineEdit>(book.screen, "txtDefaultEmail").isReadOnly());
        QVERIFY(!child(book.screen, "numMaxFileSize").isEnabled());
        book.select("Finance");
        book.messages().answer(true);
        book.press("cmdDelete");
        book.press("cmdSave");
        QCOMPARE(book.office.shown().last(), QString("Changes have been saved."));
    }
};

static const AnnounceTest<EmailSettingsTest> announced;
#include "EmailSettingsTest.moc"
