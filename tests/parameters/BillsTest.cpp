#include "parameters/Editor.h"
#include "parameters/frmBillSelection.h"
#include "support/TestClass.h"
#include "ui/uctCheckList.h"

#include <QTreeView>

/// The bill selection.
class BillsTest : public QObject {
    Q_OBJECT

    static QStringList captions(QWidget& screen) {
        const auto& model = *child<QTreeView>(screen, "lstEntries").model();
        QStringList texts;
        for (int i = 0; i < model.columnCount(); ++i) texts << model.headerData(i, Qt::Horizontal).toString();
        return texts;
    }
    static QStringList row(QWidget& screen, int index) {
        const auto& model = *child<QTreeView>(screen, "lstEntries").model();
        QStringList texts;
        for (int i = 0; i < model.columnCount(); ++i) texts << model.index(index, i).data().toString();
        return texts;
    }

private slots:
    void columnsAndTotals() {
        Office office;
        Connection& db = office.db();
        for (const char* table : {"TblCallRecords", "TblMobCalls", "TblWisperaEvents"})
            db.execute(sql("DELETE FROM Brightwater.dbo.{}", Name(table)));
        db.execute(sql("INSERT INTO Brightwater.dbo.TblCallRecords (BillID, OrigCost) VALUES (112, 1.2300), "
                       "(112, NULL), (12, 99)"));
        db.execute(sql("INSERT INTO Brightwater.dbo.TblMobCalls (BillID, OrigCost) VALUES (112, 0.1250)"));
        db.execute(sql("INSERT INTO Brightwater.dbo.TblWisperaEvents (BillID, OrigCost) VALUES (112, 5)"));
        db.execute(sql("UPDATE Brightwater.dbo.Tbl50 SET CreateDate = '20080504' WHERE BillID = 112"));
        frmBillSelection screen(office.program.context);
        QCOMPARE(screen.Setup(""), 0);
        QCOMPARE(captions(screen), (QStringList{"Bill", "Account", "Customer", "Invoice Reference", "Created",
                                                "Bill Total (£)"}));
        QCOMPARE(row(screen, 0).mid(3, 1), QStringList{"AA BW10023 0INV2008/BW10023/12"});
        QCOMPARE(row(screen, 0).last(), "18250.00");
        QCOMPARE(row(screen, 1), (QStringList{"112", "BW10023", "Brightwater Foods plc",
                                              "VP BW10023 00INV2008/BW10023/112", "04/05/2008", "6.36"}));
        QCOMPARE(row(screen, 2).last(), "0.00"); // no calls at all
        QCOMPARE(row(screen, 2).at(3), "");      // of another kind
    }

    void fewStatementsForManyBills() {
        Office office;
        for (int i = 0; i < 40; ++i)
            office.db().execute(sql("INSERT INTO Brightwater.dbo.Tbl50 (BillID) VALUES ({})", 7000 + i));
        office.program.fault.arm(0);
        frmBillSelection screen(office.program.context);
        QCOMPARE(screen.Setup(""), 0);
        QVERIFY(office.program.fault.taken <= 4);
        QCOMPARE(child<uctCheckList>(screen, "lstBills").count(), 44);
    }

    void olderProject() {
        Office office("QuorraAdmin", "Marchetti2007");
        office.db().execute(sql("UPDATE Marchetti2007.dbo.Tbl50 SET BillTotal = NULL WHERE BillID = 12"));
        frmBillSelection screen(office.program.context); // it has no TblWisperaEvents
        QCOMPARE(screen.Setup("12"), 0);
        QCOMPARE(captions(screen), (QStringList{"Bill", "Account", "Customer", "Created", "Bill Total (£)"}));
        QVERIFY(row(screen, 0).last().toDouble() > 0);
    }

    void choice() {
        Office office;
        for (const auto& [before, after] :
             {std::pair{"", "12,112,113,114"}, {"12", "12"}, {"112,114", "112,114"}, {"7,113", "113"}}) {
            frmBillSelection screen(office.program.context);
            screen.SetCallback(&office.caller, "CalledBack");
            QCOMPARE(screen.Setup(before), 0);
            press(screen, "cmdOk");
            QCOMPARE(screen.BillIds(), after);
        }
        QCOMPARE(office.caller.calls, 4);
        for (const char* button : {"cmdCancel", "cmdOk"}) {
            frmBillSelection screen(office.program.context);
            screen.SetCallback(&office.caller, "CalledBack");
            QCOMPARE(screen.Setup("112"), 0);
            press(screen, "cmdNone");
            office.program.messages.answer(true); // to lose the change
            press(screen, button);
            QCOMPARE(office.caller.calls, button == QString("cmdOk") ? 5 : 4);
            QVERIFY(button == QString("cmdCancel") || screen.BillIds().isEmpty());
        }
    }

    void tooManyToStore() {
        Office office;
        for (int i = 0; i < 60; ++i)
            office.db().execute(sql("INSERT INTO Brightwater.dbo.Tbl50 (BillID) VALUES ({})", 7000 + i));
        frmBillSelection screen(office.program.context);
        QCOMPARE(screen.Setup(""), 0);
        screen.show();
        press(screen, "cmdOk");
        QCOMPARE(office.shown(),
                 QStringList{"The identifiers of the 64 chosen bills take up 314 characters, and 200 can be "
                             "stored. Please choose fewer bills, or none to include all bills."});
        QVERIFY(screen.isVisible());
        child<QLineEdit>(screen, "txtSearch").setText("70");
        press(screen, "cmdNone"); // of those found
        press(screen, "cmdOk");
        QCOMPARE(screen.BillIds(), "12,112,113,114");
    }

    void longCheckList() {
        QStringList texts;
        for (int i = 0; i < 50'000; ++i) texts << QString("0117%1").arg(i, 7, 10, QChar('0'));
        uctCheckList list;
        list.setTexts(texts, {"01170000007", "elsewhere"});
        list.show();
        QCOMPARE(list.tickedKeys(), (QStringList{"elsewhere", "01170000007"}));
        child<QLineEdit>(list, "txtSearch").setText("99 4999");
        press(list, "cmdAll");
        QCOMPARE(list.tickedKeys().size(), 2 + texts.filter("4999").filter("99").size());
        child<QLineEdit>(list, "txtSearch").clear();
        press(list, "cmdNone");
        QCOMPARE(list.tickedKeys(), QStringList());
        QTest::keyClick(&child(list, "txtSearch"), Qt::Key_Down);
        QTest::keyClick(&child(list, "lstEntries"), Qt::Key_Space);
        QCOMPARE(list.tickedKeys(), QStringList{"elsewhere"});
    }
};

static const AnnounceTest<BillsTest> announced;

#include "BillsTest.moc"
