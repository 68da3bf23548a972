#include "numbers/frmRangeSel.h"
#include "parameters/Editor.h"
#include "support/Modal.h"
#include "support/Rows.h"
#include "support/TestClass.h"
#include "ui/uctCheckList.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QLabel>
#include <QRadioButton>
#include <QTreeView>

namespace {

void tick(QWidget& screen, const char* list, const QString& entry) {
    auto& view = child<QTreeView>(child(screen, list), "lstEntries");
    for (int row = 0; row < view.model()->rowCount(); ++row) {
        const QModelIndex index = view.model()->index(row, 0);
        if (index.data().toString().startsWith(entry))
            view.model()->setData(index, Qt::Checked, Qt::CheckStateRole);
    }
}

void choose(QWidget& screen, const char* box, const QString& text) {
    auto& combo = child<QComboBox>(screen, box);
    combo.setCurrentIndex(combo.findText(text));
    emit combo.activated(combo.currentIndex());
}

QStringList entries(QWidget& screen, const char* box) {
    auto& combo = child<QComboBox>(screen, box);
    QStringList texts;
    for (int i = 0; i < combo.count(); ++i) texts << combo.itemText(i);
    return texts;
}

} // namespace

/// Editing and saving parameters.
class EditorSavingTest : public QObject {
    Q_OBJECT

private slots:
    /// The working copy becomes the report's parameters on Save only.
    void workingCopy() {
        Office office;
        for (const bool saves : {false, true}) {
            Editor editor(office, CallReport, 161);
            QVERIFY(editor.open());
            child<QLineEdit>(editor.screen, "txtCost0").setText("0.50");
            office.program.messages.type("Dear calls");
            press(editor.screen, "cmdReportCaption");
            QCOMPARE(editor.parameters().CostRangeMinimum(), "");
            office.shown();
            office.program.messages.answer(!saves);
            QTest::keyClick(&editor.screen, Qt::Key_Escape);
            QCOMPARE(office.shown(), QStringList{"Are you sure you want to cancel your changes?"});
            QCOMPARE(editor.isOpen(), saves);
            if (saves) QCOMPARE(editor.save(), QStringList());
            QVERIFY(!editor.isOpen());
            QCOMPARE(office.caller.calls, int(saves));
            QCOMPARE(editor.parameters().CostRangeMinimum(), saves ? "0.50" : "");
            QCOMPARE(editor.parameters().ReportCaption(), saves ? "Dear calls" : "");
        }
    }

    /// Everything is wrong at first; each repair brings up the next message.
    void checksInOrder() {
        Office office;
        Editor editor(office, CallReport, 142);
        editor.parameters().setAccountFilter(3);
        QVERIFY(editor.open());
        const auto set = [&](const char* box, const QString& text) {
            child<QLineEdit>(editor.screen, box).setText(text);
        };
        auto& start = child<QDateEdit>(editor.screen, "dtStart");
        child<QDateEdit>(editor.screen, "dtEnd").setDate(QDate(2026, 3, 1));
        start.setDate(QDate(2026, 3, 2));
        set("txtCost0", "10");
        set("txtCost1", "9,5");
        set("txtDuration0", "6");
        set("txtDuration1", "5");
        QCOMPARE(editor.save(), QStringList{"The Start date parameter can not be greater than the End date "
                                            "parameter,\r\nplease try again."});
        start.setDate(QDate(2026, 3, 1));
        QVERIFY(editor.save().value(0).startsWith("'9,5' is not an amount."));
        set("txtCost1", "9.5");
        QCOMPARE(editor.save(),
                 QStringList{"The Lower Cost Threshold parameter can not be greater than the Higher "
                             "Cost Threshold parameter,\r\nplease try again."});
        set("txtCost1", "10.5");
        QCOMPARE(editor.save(),
                 QStringList{"The Lower Duration Threshold parameter can not be greater than the "
                             "Higher Duration Threshold parameter,\r\nplease try again."});
        set("txtDuration1", "");
        QCOMPARE(editor.save(), QStringList{"You have not selected any call to for the 'Calls To' Report"});
        inNextModal<frmRangeSel>([](frmRangeSel& screen) {
            type(screen, "txtNumber", "01234 567890");
            press(screen, "cmdOk");
        });
        press(editor.screen, "cmdCallsTo");
        QCOMPARE(editor.save(), QStringList{"You must select at least one cost centre"});
        tick(editor.screen, "lstAccounts", "Operations");
        QCOMPARE(editor.save(), QStringList());
        QCOMPARE(editor.parameters().CallsToNumber(), "01234567890");
        QCOMPARE(editor.parameters().CostCentre(1), "Operations");
    }

    void missingValues_data() {
        const Rows<int, int, int, QString> row;
        row("circuit", 3, 326, 2, "You have not selected a circuit for the 'Selected Circuit' Report");
        row("not to", 2, 146, 2, "You have not selected any calls not to for the 'Calls Not To' Report");
        row("from", 5, 143, 2, "You have not selected any calls from for the 'Calls From' Report");
        row("repeat", 2, 160, 2, "You have not entered a threshold for the 'Repeat Caller' Report");
        row("handset", 5, 195, 1, "You have not selected any handset numbers for a Mobile Report");
        row("several levels", 1, 221, 0, "You must select at least one cost centre");
        row("level", 3, 322, 7, "You must select at least one cost centre");
        row("number", 2, 161, 1, "You must select at least one service number");
        row("lines", 2, 161, 8, "You must select at least one line");
        row("source bill", 1, 231, 2, "You must select a Source Bill Reference that exists in the list.");
    }
    void missingValues() {
        const auto [reportType, id, accountFilter, message] = thisRow<int, int, int, QString>();
        Office office;
        Editor editor(office, reportType, id);
        editor.parameters().setAccountFilter(accountFilter);
        QVERIFY(editor.open());
        auto* sourceBill = editor.screen.findChild<QComboBox*>("cmbSourceBill");
        if (id == 231) sourceBill->setEditText("x]'--");
        QCOMPARE(editor.save(), QStringList{message});
        QVERIFY(editor.isOpen());
        QCOMPARE(office.caller.calls, 0);
        if (id != 231) return;
        sourceBill->setEditText("bw10023-b"); // in other letters than the list has
        QCOMPARE(editor.save(), QStringList());
        QCOMPARE(editor.parameters().SourceBillRef(), "bw10023-b");
    }

    void texts_data() {
        const Rows<QString, QString, QString> row;
        const QString tooLong = "Report caption is too long - please shorten to a maximum of 50 characters";
        const QString letters = "Report caption contains characters that are not allowed \\ / : * ? < >";
        row("blank", "cmdReportCaption", "  ", "Report caption is blank - please enter a valid caption");
        row("50", "cmdReportCaption", QString(50, 'x'), "");
        row("51", "cmdReportCaption", QString(51, 'x'), tooLong);
        row("10,000", "cmdReportCaption", QString(10'000, '?'), tooLong);
        for (const QChar letter : QString("\\/:*?<>"))
            row(qPrintable(QString("letter %1").arg(letter)), "cmdReportCaption", QString("a%1").arg(letter),
                letters);
        row("quotes", "cmdReportCaption", "O'Brien \"x\" [y] Ω 東京", "");
        row("header 200", "cmdReportHeader", QString(200, 'x'), "");
        row("header 201", "cmdReportHeader", QString(201, 'x'),
            "Report header is too long - please shorten to a maximum of 200 characters");
        row("header letter", "cmdReportHeader", "a/b", letters);
        row("no header", "cmdReportHeader", "", "");
    }
    void texts() {
        const auto [button, text, message] = thisRow<QString, QString, QString>();
        Office office;
        Editor editor(office, BillingReport, 211);
        editor.parameters().setReportHeader("before");
        editor.parameters().setReportCaption("before");
        QVERIFY(editor.open());
        const bool header = button == "cmdReportHeader";
        const QString prompt = header ? "Please enter a report header (max 200 characters)"
                                      : "Please enter a report caption (max 50 characters)";
        office.program.messages.type(text);
        if (!message.isEmpty()) office.program.messages.type(std::nullopt); // asked again, given up
        press(editor.screen, qPrintable(button));
        QCOMPARE(office.shown(),
                 message.isEmpty() ? QStringList{prompt} : (QStringList{prompt, message, prompt}));
        QCOMPARE(editor.save(), QStringList());
        const QString stored =
            header ? editor.parameters().ReportHeader() : editor.parameters().ReportCaption();
        QCOMPARE(stored, message.isEmpty() ? text : "before");
    }

    void thresholdsAreComparedOnLeaving() {
        Office office;
        Editor editor(office, CallReport, 161);
        QVERIFY(editor.open());
        editor.screen.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&editor.screen));
        auto& lower = child<QLineEdit>(editor.screen, "txtDuration0");
        auto& higher = child<QLineEdit>(editor.screen, "txtDuration1");
        lower.setFocus();
        QTest::keyClicks(&lower, "5");
        QTest::keyClick(&lower, Qt::Key_Tab); // into the other box of the pair: nothing is said yet
        QTest::keyClicks(&higher, "5");
        QTest::qWait(50);
        QCOMPARE(office.shown(), QStringList());
        QTest::keyClick(&higher, Qt::Key_Tab);
        QTest::qWait(50);
        const QStringList refusal{"For the 'duration between' threshold, the second value must be greater "
                                  "than the first value.\r\nPlease ammend the value."};
        QCOMPARE(office.shown(), refusal);
        QCOMPARE(editor.screen.focusWidget(), &higher);
        auto& day = child<QCheckBox>(editor.screen, "ChkDay1");
        day.setFocus(); // as a click does
        const QPoint place = day.mapTo(&editor.screen, QPoint(5, day.height() / 2));
        QTest::mousePress(editor.screen.windowHandle(), Qt::LeftButton, {}, place);
        QTest::qWait(50);
        QCOMPARE(office.shown(), QStringList()); // not before the click is through
        QTest::mouseRelease(editor.screen.windowHandle(), Qt::LeftButton, {}, place);
        QVERIFY(!day.isChecked());
        QTRY_COMPARE(editor.screen.focusWidget(), &higher);
        QCOMPARE(office.shown(), refusal);
        child(editor.screen, "cmdSave").setFocus(); // on the way to Save, which has the same words
        QTest::qWait(50);
        QCOMPARE(editor.save(), refusal);
        QCOMPARE(editor.screen.focusWidget(), &higher);
        QTest::keyClicks(&higher, "9");
        QCOMPARE(editor.save(), QStringList());
        QCOMPARE(editor.parameters().DurationRangeMaximum(), "59");
    }

    void oversizeTextsAreRefusedInWords_data() {
        const Rows<int, int, QString, QString, QString> row;
        row("cost", 2, 161, "txtCost0", QString(10'000, '0'),
            "The lowest cost is too long: 10000 characters were entered, 20 fit.");
        row("more than a currency value holds", 2, 161, "txtDuration0", QString(15, '9'),
            "'999999999999999' is not an amount. Please use digits and a decimal point only, for example "
            "1250.50. The largest amount is 900000000000000.");
        row("bill", 4, 273, "txtBillNumber", QString(51, 'x'),
            "The bill number is too long: 51 characters were entered, 50 fit.");
        row("user", 5, 131, "cmbWisperaUser", "Ωmega",
            "The Wispera user ID holds the letter 'Ω', which the database cannot store.");
    }
    void oversizeTextsAreRefusedInWords() {
        const auto [reportType, id, box, text, message] = thisRow<int, int, QString, QString, QString>();
        Office office;
        Editor editor(office, reportType, id);
        QVERIFY(editor.open());
        if (auto* combo = editor.screen.findChild<QComboBox*>(box))
            combo->setEditText(text);
        else
            child<QLineEdit>(editor.screen, qPrintable(box)).setText(text);
        QCOMPARE(editor.save(), QStringList{message});
        QVERIFY(editor.isOpen());
    }

    /// Scrolling past a box must not change it unseen.
    void wheelScrollsOverBoxes() {
        Office office;
        Editor editor(office, CircuitReport, 321);
        QVERIFY(editor.open());
        auto& box = child<QComboBox>(editor.screen, "CmbPercent");
        child(editor.screen, "lstGroups").setFocus();
        turnWheel(box);
        QCOMPARE(box.currentText(), "0");
        editor.screen.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&editor.screen));
        box.setFocus();
        turnWheel(box);
        QCOMPARE(box.currentText(), "1");
    }

    void lastDayStays() {
        Office office;
        Editor editor(office, CallReport, 161);
        QVERIFY(editor.open());
        for (int day = 1; day <= 7; ++day) press(editor.screen, qPrintable(QString("ChkDay%1").arg(day)));
        QCOMPARE(office.shown(), QStringList{"You must have at least 1 day selected"});
        QVERIFY(child<QCheckBox>(editor.screen, "ChkDay7").isChecked());
    }

    void severalValuesAreJoined() {
        Office office;
        Editor editor(office, CallReport, 161);
        QVERIFY(editor.open());
        press(editor.screen, "OptSelect1");
        tick(editor.screen, "lstAccounts", "01174961000");
        press(editor.screen, "OptSelect4");
        tick(editor.screen, "lstAccounts", "O'Connell Street Shop");
        tick(editor.screen, "lstAccounts", "Audit");
        press(editor.screen, "OptSelect1");
        tick(editor.screen, "lstAccounts", "01174961037"); // the first choice was remembered
        Editor second(office, CallReport, 161);
        QCOMPARE(editor.save(), QStringList());
        QCOMPARE(editor.parameters().AccountFilter(), 1);
        QCOMPARE(editor.parameters().ServiceNumber(), "01174961000|01174961037");
        QCOMPARE(editor.parameters().CostCentre(2), "");

        second.parameters().setAccountFilter(4);
        second.parameters().setCostCentre(2, "Gone|Audit");
        QVERIFY(second.open());
        tick(second.screen, "lstAccounts", "O'Connell Street Shop");
        QCOMPARE(second.save(), QStringList());
        QCOMPARE(second.parameters().CostCentre(2), "Gone|Audit|O'Connell Street Shop");
    }

    void selectedLines() {
        Office office;
        Editor editor(office, CallReport, 161);
        QVERIFY(editor.open());
        press(editor.screen, "OptSelect8");
        QVERIFY(child(editor.screen, "cmbLineSelection").isVisible());
        const QString line =
            office.db().scalar(sql("SELECT MIN(CallingNo) FROM Brightwater.dbo.TblCallRecords"));
        tick(editor.screen, "cmbLineSelection", line);
        QCOMPARE(editor.save(), QStringList());
        QCOMPARE(editor.parameters().AccountFilter(), 8);
        QCOMPARE(editor.parameters().LineSelection(), line);
        Editor trends(office, CallReport, 164); // a report that does not accept it
        QVERIFY(trends.open());
        QVERIFY(!trends.screen.findChild<QWidget*>("OptSelect8"));
    }

    /// Saving a report whose selection is not offered must not widen it.
    void unofferedSelectionIsKept() {
        for (const bool chooses : {false, true}) {
            Office office;
            Editor editor(office, BillingReport, 221);
            editor.parameters().setAccountFilter(9);
            editor.parameters().setServiceNumber("0117");
            editor.parameters().setCostCentre(2, "Audit");
            QVERIFY(editor.open());
            QVERIFY(!child<QRadioButton>(editor.screen, "OptSelect2").isChecked());
            if (chooses) press(editor.screen, "OptSelect2");
            QCOMPARE(editor.save(), QStringList());
            QCOMPARE(editor.parameters().AccountFilter(), chooses ? 2 : 9);
            QCOMPARE(editor.parameters().ServiceNumber(), chooses ? "" : "0117");
            QCOMPARE(editor.parameters().CostCentre(2), chooses ? "" : "Audit");
        }
    }

    /// Letter case makes no other entry; words typed for one list do not hide those of the next.
    void storedKeysInOtherLetters() {
        Office office;
        Editor editor(office, CallReport, 161);
        editor.parameters().setAccountFilter(4);
        editor.parameters().setCostCentre(2, "audit|GONE|gone");
        QVERIFY(editor.open());
        auto& list = child<uctCheckList>(editor.screen, "lstAccounts");
        QCOMPARE(list.tickedKeys(), (QStringList{"GONE", "Audit"}));
        auto& search = child<QLineEdit>(list, "txtSearch");
        search.setText("audit");
        press(editor.screen, "OptSelect3");
        QCOMPARE(search.text(), "");
        QCOMPARE(child<QTreeView>(list, "lstEntries").model()->rowCount(), list.count());
    }

    /// Whichever list cannot be read, all boxes keep their entries and choices.
    void failedLevelsStay() {
        Office office;
        Editor editor(office, CallReport, 161);
        QVERIFY(editor.open());
        press(editor.screen, "OptSelect0");
        choose(editor.screen, "cmbCC1", "Children's Services");
        choose(editor.screen, "cmbCC2", "Nursery");
        const QStringList before = entries(editor.screen, "cmbCC2");
        for (int step = 1; step <= 4; ++step) { // four lists lie below the first
            office.program.fault.arm(step);
            choose(editor.screen, "cmbCC1", "Operations");
            QCOMPARE(office.shown(), QStringList{"Made to fail."});
            QCOMPARE(child<QComboBox>(editor.screen, "cmbCC1").currentText(), "Children's Services");
            QCOMPARE(entries(editor.screen, "cmbCC2"), before);
            QCOMPARE(child<QComboBox>(editor.screen, "cmbCC2").currentText(), "Nursery");
        }
    }

    void typedCostCentres() {
        Office office;
        Editor editor(office, CallReport, 161);
        QVERIFY(editor.open());
        press(editor.screen, "OptSelect0");
        const auto typeCentre = [&](const char* box, const QString& text) {
            QLineEdit& edit = *child<QComboBox>(editor.screen, box).lineEdit();
            edit.setText(text);
            emit edit.editingFinished();
            return edit.text();
        };
        QCOMPARE(typeCentre("cmbCC1", "children's SERVICES"), "Children's Services");
        QCOMPARE(entries(editor.screen, "cmbCC2"), (QStringList{"(any)", "Holiday Club", "Nursery"}));
        QCOMPARE(typeCentre("cmbCC1", "no such centre"), "Children's Services");
        QCOMPARE(typeCentre("cmbCC2", "Nursery"), "Nursery");
        QCOMPARE(typeCentre("cmbCC2", ""), "(any)");
        office.db().execute(
            sql("UPDATE Brightwater.dbo.BW10023_TblCC SET CostCentre2 = N' Nursery 2' WHERE CostCentre2 = "
                "N'Holiday Club'"));
        choose(editor.screen, "cmbCC3", entries(editor.screen, "cmbCC3").value(1));
        choose(editor.screen, "cmbCC1", "No Cost Centre allocated"); // takes the levels below with it
        QCOMPARE(entries(editor.screen, "cmbCC2"), (QStringList{"(any)", "No Cost Centre allocated"}));
        QCOMPARE(child<QComboBox>(editor.screen, "cmbCC3").currentText(), "(any)");
        choose(editor.screen, "cmbCC1", "Children's Services");
        QCOMPARE(typeCentre("cmbCC2", " Nursery 2"), " Nursery 2"); // a blank is a part of the name
        QCOMPARE(typeCentre("cmbCC2", "Nursery"), "Nursery");
        child<QComboBox>(editor.screen, "cmbCC2")
            .lineEdit()
            ->setText("nursery"); // saved without leaving the box
        QCOMPARE(editor.save(), QStringList());
        QCOMPARE(editor.parameters().CostCentre(1), "Children's Services");
        QCOMPARE(editor.parameters().CostCentre(2), "Nursery");
    }

    /// A user restricted to Operations, Warehouse cannot widen that, whatever the report held.
    void restrictedUser() {
        Office office("Siobhan.Kelly");
        Editor editor(office, CallReport, 161);
        editor.parameters().setAccountFilter(3);
        editor.parameters().setCostCentre(1, "Finance");
        QVERIFY(editor.open());
        for (const char* option : {"OptSelect2", "OptSelect3", "OptSelect4", "OptSelect7"})
            QVERIFY(!child(editor.screen, option).isEnabled());
        QVERIFY(!child(editor.screen, "cmbCC1").isEnabled());
        press(editor.screen, "OptSelect1");
        const RecordSet own =
            office.db().query(sql("SELECT DISTINCT TelNo FROM Brightwater.dbo.BW10023_TblCC WHERE "
                                  "CostCentre1 = 'Operations' AND CostCentre2 = 'Warehouse'"));
        QCOMPARE(child<uctCheckList>(editor.screen, "lstAccounts").count(), int(own.rowCount()));
        press(editor.screen, "OptSelect0");
        QCOMPARE(editor.save(), QStringList());
        QCOMPARE(editor.parameters().AccountFilter(), 0);
        QCOMPARE(editor.parameters().CostCentre(1), "Operations");
        QCOMPARE(editor.parameters().CostCentre(2), "Warehouse");
    }

    void storedValuesThatTheBoxesDoNotOfferStay() {
        Office office;
        Editor bill(office, InvoiceReport, 273);
        bill.parameters().setLinkvaleBillNumber("Q025 UN");
        QVERIFY(bill.open());
        QCOMPARE(child<QComboBox>(bill.screen, "cmbBillType").currentText(), "Q - Quarterly");
        choose(bill.screen, "cmbBillType", "M - Monthly");
        QCOMPARE(bill.save(), QStringList());
        QCOMPARE(bill.parameters().LinkvaleBillNumber(), "M025 UN");

        Editor circuits(office, CircuitReport, 321);
        circuits.parameters().setCircuitsPercentage(7);
        QVERIFY(circuits.open());
        QCOMPARE(circuits.save(), QStringList());
        QCOMPARE(circuits.parameters().CircuitsPercentage(), 7);
    }

    void datesAreThoseOfTheProjectOrHinted() {
        Office office;
        Editor editor(office, CallReport, 161);
        QVERIFY(editor.open());
        auto& hint = child<QLabel>(editor.screen, "lblDates");
        QVERIFY(!hint.text().contains("no calls"));
        child<QDateEdit>(editor.screen, "dtEnd").setDate(QDate(2003, 1, 1));
        QVERIFY(hint.text().contains("lies after"));
        child<QDateEdit>(editor.screen, "dtStart").setDate(QDate(2002, 1, 1));
        QVERIFY(hint.text().contains("no calls"));

        CurrentProject& project = office.program.session.project;
        project.edited = {"BW10023", 1, true};
        Editor fixed(office, CallReport, 161);
        QVERIFY(fixed.open());
        QVERIFY(!child(fixed.screen, "dtStart").isEnabled());
        QCOMPARE(child<QDateEdit>(fixed.screen, "dtStart").date(), project.defaultStart);
    }
};

static const AnnounceTest<EditorSavingTest> announced;

#include "EditorSavingTest.moc"
