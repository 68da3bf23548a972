#include "numbers/ExcludedNumbers.h"
#include "numbers/frmExcludeNumbers.h"
#include "numbers/frmRangeSel.h"
#include "numbers/uctNumberGrid.h"
#include "parameters/Editor.h"
#include "support/Files.h"
#include "support/Rows.h"
#include "support/TestClass.h"

#include <QClipboard>
#include <QListView>
#include <QProgressBar>
#include <QTemporaryDir>

namespace {

const QString duplicate = "This entry would create duplicate telephone numbers. "
                          "This value can not be entered in the grid.";

QStringList column(Connection& db, const Sql& query) {
    QStringList texts;
    for (const Row row : db.query(query)) texts << row.text(0);
    return texts;
}

QStringList grid(QWidget& screen) {
    return child<uctNumberGrid>(screen, "grid").numbers();
}

} // namespace

/// The two screens that edit telephone numbers, and their files.
class NumbersTest : public QObject {
    Q_OBJECT

    QTemporaryDir m_folder;

    QString file(const QByteArray& content) {
        const QString path = m_folder.filePath("numbers.csv");
        writeFile(path, content);
        return path;
    }
    static QStringList excluded(Office& office, int templateId) {
        return column(office.db(), sql("SELECT TelNo FROM NorvaScheduler.dbo.TblExcludedNumbers WHERE "
                                       "TemplateID = {} ORDER BY TelNo",
                                       templateId));
    }
    static void exclude(Office& office, int templateId, const QStringList& numbers) {
        for (const QString& number : numbers)
            office.db().execute(
                sql("INSERT INTO NorvaScheduler.dbo.TblExcludedNumbers (TemplateID, TelNo) VALUES ({}, {})",
                    templateId, number));
    }

    static QStringList workingTables(Office& office) {
        return column(office.db(),
                      sql("SELECT name FROM Brightwater.dbo.sysobjects WHERE name LIKE '%_TblCallsTo'"));
    }
    static QStringList working(Office& office) {
        return column(office.db(), sql("SELECT CalledNo FROM Brightwater.dbo.{} ORDER BY CalledNo",
                                       Name(workingTables(office).value(0, "none"))));
    }

private slots:
    void desksOfOneUserKeepTheirLists() {
        Office office;
        const QString ended =
            "QuorraAdmin_" + DeskMark().name() + "_TblCallsTo"; // left by a program that ended early
        office.db().execute(sql("CREATE TABLE Brightwater.dbo.{} (CalledNo varchar(20))", Name(ended)));
        {
            frmRangeSel one(office.program.context);
            frmRangeSel two(office.program.context);
            QCOMPARE(one.SetupNumbers("1", "Calls to"), 0);
            QCOMPARE(two.SetupNumbers("2", "Calls to"), 0);
            press(one, "cmdOk");
            QCOMPARE(one.numbers(), "1");
            QVERIFY(workingTables(office).size() == 2 && !workingTables(office).contains(ended));
        }
        QCOMPARE(workingTables(office), QStringList());
    }

    void listGoesThroughTheWorkingTable() {
        Office office("Maeve.O'Connor");
        frmRangeSel screen(office.program.context);
        screen.SetCallback(&office.caller, "calledback");
        QCOMPARE(screen.SetupNumbers(" 01234,  0567 ,,01234", "Calls to"), 0);
        QCOMPARE(office.shown(), QStringList{"The list held numbers that cannot be used: 1 is a duplicate."});
        screen.show();
        type(screen, "txtNumber", "0567");
        QCOMPARE(office.shown(), QStringList{duplicate});
        type(screen, "txtNumber", "'; [*]");
        type(screen, "txtNumber", QString(10'000, '7'));
        QCOMPARE(office.shown(),
                 QStringList{"The telephone number is too long: 10000 characters were entered, 20 fit."});
        QCOMPARE(child<QLineEdit>(screen, "txtNumber").text().size(),
                 10'000);                            // what was typed is still there
        for (const QString typed : {"NHS", "1,2"}) { // OK takes what is typed, or stays
            child<QLineEdit>(screen, "txtNumber").setText(typed);
            press(screen, "cmdOk");
            QCOMPARE(office.shown().size(), 1);
            QCOMPARE(child<QLineEdit>(screen, "txtNumber").text(), typed);
            QVERIFY(screen.isVisible());
        }
        QCOMPARE(working(office), (QStringList{"';[*]", "01234", "0567"}));
        child<QLineEdit>(screen, "txtNumber").setText(" 0 89 ");
        press(screen, "cmdOk");
        QCOMPARE(screen.numbers(), "01234, 0567, ';[*], 089");
        QCOMPARE(office.caller.calls, 1);
        QVERIFY(!screen.isVisible());
        QCOMPARE(office.program.session.db().defaultDatabase(), "NorvaScheduler");
    }

    void pastedLinesAreSeveralNumbers() {
        Office office;
        frmRangeSel screen(office.program.context);
        QCOMPARE(screen.SetupNumbers("1", "Calls to"), 0);
        screen.show();
        QString lines = "1\nNHS\n";
        for (int i = 0; i < 5000; ++i) lines += QString("0117 4%1\r\n").arg(i, 6, 10, QChar('0'));
        QGuiApplication::clipboard()->setText(lines);
        auto& box = child<QLineEdit>(screen, "txtNumber");
        box.paste();
        QTest::keyClick(&box, Qt::Key_Return);
        QCOMPARE(
            office.shown(),
            QStringList{duplicate + "\n\n2 of the 5002 numbers could not be added and are left in the box."});
        QCOMPARE(box.text().split('\n'), (QStringList{"1", "NHS"}));
        QCOMPARE(grid(screen).size(), 5001);
        QCOMPARE(grid(screen).last(), "01174004999");
        office.program.messages.answer(false); // nothing but the box holds them
        press(screen, "cmdCancel");
        QVERIFY(screen.isVisible());
    }

    void emptyListIsNotTaken() {
        Office office;
        frmRangeSel screen(office.program.context);
        QCOMPARE(screen.SetupNumbers("1,2,3", "Calls from"), 0);
        screen.show();
        child<QListView>(screen, "DBGrid1")
            .setCurrentIndex(child<QListView>(screen, "DBGrid1").model()->index(1, 0));
        QTest::keyClick(&child(screen, "DBGrid1"), Qt::Key_Delete);
        QCOMPARE(grid(screen), (QStringList{"1", "3"}));
        press(screen, "cmdDelete");
        press(screen, "cmdOk");
        QCOMPARE(office.shown(), QStringList{"No Telephone numbers have been entered."});
        QVERIFY(screen.isVisible());
        office.program.messages.answer(true);
        press(screen, "cmdCancel");
        QVERIFY(!screen.isVisible());
        QCOMPARE(screen.numbers(), "");
    }

    void files_data() {
        const Rows<QByteArray, QStringList, QString> row;
        const QStringList before{"1", "2"};
        row("quotes and blanks", "\"01234 567\"\r\n\r\n 0 5 6 \n", {"01234567", "056"}, "");
        row("old line ends", "12\r34\r", {"12", "34"}, "");
        row("UTF-8 mark", "\357\273\27712\n", {"12"}, "");
        row("UTF-16", QByteArray("\377\3761\0002\0", 6), {"12"}, "");
        row("Western signs", "12\xA3\n", {"12£"}, "");
        row("commas and tabs", "\"01,02\"\n,\n03\t04,\n", {"01", "02", "03", "04"}, "");
        row("half broken", "Number\n77\n" + QByteArray(30, '8') + "\n\xE2\x88\x9E\n77\n99\n", {"77", "99"},
            "4 of the file's 6 numbers were left out: 1 is longer than 20 characters, 1 holds letters, 1 "
            "holds signs that the database cannot store, 1 is a duplicate.");
        row("binary", QByteArray("MZ\x90\0\x03\n12\n", 8), before, "holds no plain text");
        row("empty", "\n\n", before, "The file holds no usable telephone numbers. The list is as it was.");
    }
    void files() {
        const auto [content, numbers, message] = thisRow<QByteArray, QStringList, QString>();
        Office office;
        frmRangeSel screen(office.program.context);
        QCOMPARE(screen.SetupNumbers("1,2", "Calls to"), 0);
        office.program.messages.pick(file(content));
        press(screen, "cmdLoad");
        const QStringList shown = office.shown();
        QVERIFY2(message.isEmpty() ? shown.isEmpty() : shown.value(0).contains(message),
                 qPrintable(shown.join('\n')));
        QCOMPARE(grid(screen), numbers);
    }

    void savedFileAndOverwriting() {
        Office office;
        frmRangeSel screen(office.program.context);
        QCOMPARE(screen.SetupNumbers("01234,*9£,+44,=1+1,=A1,-B1", "Calls to"), 0);
        const QString path = file("old");
        office.program.messages.pick(m_folder.filePath("saved")); // becomes saved.CSV
        press(screen, "cmdSave");
        QVERIFY(QFile::exists(m_folder.filePath("saved.CSV")));
        office.program.messages.pick(path);
        office.program.messages.answer(false);
        press(screen, "cmdSave");
        QCOMPARE(office.shown(), QStringList{"File already exists, do you want to continue?"});
        office.program.messages.pick(path);
        office.program.messages.answer(true);
        press(screen, "cmdSave");
        QVERIFY(readFile(path).endsWith("\r\n+44\r\n'=1+1\r\n'=A1\r\n'-B1\r\n"));
        office.program.messages.pick(path);
        press(screen, "cmdDelete");
        press(screen, "cmdLoad");
        QCOMPARE(grid(screen), (QStringList{"01234", "*9£", "+44", "=1+1"}));
        office.program.messages.pick(m_folder.filePath("none.csv"));
        press(screen, "cmdLoad");
        QVERIFY(office.shown().last().contains("cannot be read"));
        office.program.messages.pick(m_folder.filePath("no such folder/out.csv"));
        press(screen, "cmdSave");
        QVERIFY(office.shown().last().contains("cannot be written"));
        QCOMPARE(grid(screen), (QStringList{"01234", "*9£", "+44", "=1+1"}));
    }

    /// Whichever statement of a load fails, the list on the server and in the grid is as before.
    void everyFailureOfALoad() {
        Office office;
        QByteArray content;
        for (int i = 0; i < 2200; ++i) content += QByteArray::number(5000 + i) + '\n';
        const QString path = file(content);
        exclude(office, 7, {"1", "2"});
        frmRangeSel range(office.program.context);
        QCOMPARE(range.SetupNumbers("1,2", "Calls to"), 0);
        frmExcludeNumbers exclusions(office.program.context);
        QCOMPARE(exclusions.Setup(7), 0);
        for (QWidget* screen : {static_cast<QWidget*>(&range), static_cast<QWidget*>(&exclusions)}) {
            int failures = 0;
            for (int step = 1; step <= 7; ++step) { // delete, five inserts, commit
                office.program.messages.pick(path);
                office.program.fault.arm(step);
                press(*screen, "cmdLoad");
                failures += office.shown() == QStringList{"Made to fail."};
                QCOMPARE(grid(*screen), (QStringList{"1", "2"}));
                QCOMPARE(working(office).size(), screen == &range ? 2 : 2200);
                QVERIFY(!screen->findChild<QProgressBar*>()->isVisibleTo(screen));
                QCOMPARE(excluded(office, 7), (QStringList{"1", "2"}));
            }
            QCOMPARE(failures, 7);
            office.program.fault.arm(0);
            office.program.messages.pick(path);
            press(*screen, "cmdLoad");
            QCOMPARE(grid(*screen).size(), 2200);
        }
        QCOMPARE(excluded(office, 7).size(), 2200);
        const QByteArray log = readFile(office.program.session.log.path()); // tells where each failed
        QVERIFY(log.contains("\"frmRangeSel.cmdLoad_Click\",50000"));
        QVERIFY(log.contains("\"frmExcludeNumbers.cmdLoad_Click\",50000"));
    }

    void failureWhileOpening() {
        Office office;
        for (int step = 1; step <= 8; ++step) {
            frmRangeSel screen(office.program.context);
            office.program.fault.arm(step);
            // Restoring the default database, the fourth step, does not fail: the connection is opened anew.
            QCOMPARE(screen.SetupNumbers("1", "Calls to"), step == 4 ? 0 : -1);
            QCOMPARE(office.shown().size(), step == 4 ? 0 : 1);
            QCOMPARE(office.program.session.db().defaultDatabase(), "NorvaScheduler");
        }
    }

    void exclusionsOfANewTemplate() {
        Office office;
        exclude(office, -1, {"0800"});
        exclude(office, 7, {"0800", "0900"});
        frmExcludeNumbers screen(office.program.context);
        screen.SetCallback(&office.caller, "CalledBack");
        QCOMPARE(screen.Setup(-1), 0);
        QCOMPARE(grid(screen), QStringList{"0800"});
        exclude(office, -1, {"0700"}); // by another program, while the screen is open
        type(screen, "txtNumber", "0700");
        QCOMPARE(office.shown(), QStringList{duplicate});
        type(screen, "txtNumber", QString(25, '3'));
        QCOMPARE(excluded(office, -1), (QStringList{"0700", "0800", QString(25, '3')}));

        child<QListView>(screen, "DBGrid1")
            .setCurrentIndex(child<QListView>(screen, "DBGrid1").model()->index(0, 0));
        office.program.messages.answer(false);
        press(screen, "cmdDeletedSelected");
        office.program.messages.answer(true);
        press(screen, "cmdDeletedSelected");
        QCOMPARE(office.shown(), QStringList(2, "Do you wish to delete '0800' from the Exclusion List ?"));
        QVERIFY(!excluded(office, -1).contains("0800"));
        office.program.messages.answer(true);
        press(screen, "cmdDelete");
        QCOMPARE(office.shown(), QStringList{"Do you wish to delete all numbers from the Exclusion List ?"});
        QCOMPARE(excluded(office, -1), QStringList());
        QCOMPARE(excluded(office, 7), (QStringList{"0800", "0900"}));
        child<QLineEdit>(screen, "txtNumber").setText("0600");
        press(screen, "cmdOk");
        QCOMPARE(excluded(office, -1), QStringList{"0600"});
        QCOMPARE(office.program.session.newExclusions, QStringList{"0600"});
        QCOMPARE(office.caller.calls, 1);
    }

    /// Cancel leaves what others did meanwhile, and the numbers put back are what they were; it keeps the
    /// screen open when it cannot undo.
    void cancelKeepsTheWorkOfOthers() {
        Office office;
        exclude(office, 7, {"1", "2", "4"});
        office.db().execute(sql("UPDATE NorvaScheduler.dbo.TblExcludedNumbers SET Include = 1 WHERE "
                                "TemplateID = 7 AND TelNo IN ('1', '4')"));
        frmExcludeNumbers screen(office.program.context);
        QCOMPARE(screen.Setup(7), 0);
        screen.show();
        type(screen, "txtNumber", "3");
        exclude(office, 7, {"8"});
        auto& list = child<QListView>(screen, "DBGrid1");
        list.selectAll();
        for (const bool yes : {true, false})
            office.program.messages.answer(yes); // 1, 2; then no more is asked
        press(screen, "cmdDeletedSelected");
        QCOMPARE(excluded(office, 7), (QStringList{"2", "3", "4", "8"}));
        QCOMPARE(grid(screen).size(), 4);
        type(screen, "txtNumber", "5");
        exclude(office, 7, {"9"});
        for (const int failing : {2, 0}) {
            office.program.fault.arm(failing);
            office.program.messages.answer(true);
            press(screen, "cmdCancel");
            QCOMPARE(screen.isVisible(), failing != 0);
        }
        QCOMPARE(excluded(office, 7), (QStringList{"1", "2", "4", "8", "9"}));
        QCOMPARE(column(office.db(), sql("SELECT TelNo FROM NorvaScheduler.dbo.TblExcludedNumbers WHERE "
                                         "TemplateID = 7 AND Include = 1 ORDER BY TelNo")),
                 (QStringList{"1", "4"}));
    }
};

static const AnnounceTest<NumbersTest> announced;

#include "NumbersTest.moc"
