#include "parameters/Editor.h"
#include "parameters/uctDistance.h"
#include "reports/CallFilter.h"
#include "support/Rows.h"
#include "support/TestClass.h"

#include <QCheckBox>
#include <QRadioButton>
#include <QToolButton>

/// Which groups and line choices the editor shows for each report of the catalogue.
class EditorGroupsTest : public QObject {
    Q_OBJECT

    std::unique_ptr<Office> m_office;

private slots:
    void init() {
        if (!m_office) m_office = std::make_unique<Office>();
    }

    void groups_data() {
        const Rows<int, int, QString, QString> row; // the frames, and the line choices that are offered
        row("bill", 1, 231, "CC SourceBill", "");
        row("calls from", 2, 143, "Numbers Dates Times Distance Thresholds CallClasses", "01234");
        row("dearest", 2, 111, "Dates Times Distance Thresholds CC Exclusions CallClasses", "01234");
        row("calls in fixed lines", 2, 171, "Dates CC", "14");
        row("compared circuits", 3, 321, "CC Circuits", "");
        row("one circuit", 3, 326, "SelectedCircuit", "");
        row("Linkvale", 4, 273, "Linkvale", "");
        row("tagged", 5, 191, "Dates Times Thresholds CC CallTagging", "01234");
        row("Wispera", 5, 131, "Dates Times Thresholds CC WPParams", "");
        row("in no catalogue", 2, 999, "", "");
    }
    void groups() {
        const auto [type, id, frames, lines] = thisRow<int, int, QString, QString>();
        m_office->db().execute(sql("UPDATE Brightwater.dbo.TblMobCalls SET CallClass = '' WHERE RecID = "
                                   "(SELECT MIN(RecID) FROM Brightwater.dbo.TblMobCalls)"));
        Editor editor(*m_office, type, id);
        QVERIFY(editor.open());
        QStringList shown;
        for (const char* frame :
             {"FrameNumbers", "FrameDates", "FrameTimes", "FrameDistance", "FrameThresholds", "FrameCC",
              "FrameLinkvale", "FrameCircuits", "FrameSelectedCircuit", "frameSourceBill", "FrameWPParams",
              "FrameCallTagging", "frameExclusions", "FrameCallClasses"})
            if (const auto* found = editor.screen.findChild<QWidget*>(frame); found && found->isVisible())
                shown << QString(frame).mid(5);
        QCOMPARE(shown.join(' '), frames);
        QString enabled;
        for (int filter = 0; filter <= 4; ++filter)
            if (const auto* option = editor.screen.findChild<QRadioButton*>(QString("OptMob%1").arg(filter)))
                if (option->isEnabled()) enabled += QString::number(filter);
        QCOMPARE(enabled, lines);
        if (id != 111) return;
        m_office->db().execute(sql("UPDATE Brightwater.dbo.TblMobCalls SET CallClass = 'SMS'"));
        Editor classed(*m_office, type, id);
        QVERIFY(classed.open());
        QVERIFY(!classed.screen.findChild<QWidget*>("FrameCallClasses")); // for calls without a class
    }

    /// A project that lacks what the lists are read from can be worked with all the same.
    void missingTables() {
        const auto office = std::move(m_office); // of no use to others afterwards
        for (const char* table :
             {"TblCcts", "TblMobCalls", "TblWisperaEvents", "BW10023_TblCC", "TblCallRecords"})
            office->db().execute(sql("DROP TABLE Brightwater.dbo.{}", Name(table)));
        for (const auto& [type, id] : {std::pair{1, 231}, {2, 111}, {3, 326}, {5, 131}, {5, 195}}) {
            Editor editor(*office, type, id);
            QVERIFY(editor.open());
            for (const char* name : {"OptSelect1", "OptSelect8", "OptSelect0"})
                if (auto* option = editor.screen.findChild<QRadioButton*>(name)) option->click();
        }
        QCOMPARE(office->shown(), QStringList());
    }

    /// The lists are read while the screen opens: a failure leaves a reason and no half screen.
    void failureWhileOpening() {
        const auto office = std::move(m_office); // of no use to others afterwards
        office->program.fault.arm(1);
        Editor editor(*office, BillingReport, 231);
        QVERIFY(!editor.open());
        QCOMPARE(editor.screen.loadProblem(), "Made to fail.");
    }

    void bandsFollowTheLines() {
        Editor editor(*m_office, CallReport, 161);
        editor.parameters().setDistanceBandSelected(2, false);
        QVERIFY(editor.open());
        const auto ticks = [&] {
            QString text;
            for (int band = 1; band <= 23; ++band) {
                const auto& box =
                    child<QCheckBox>(editor.screen, qPrintable(QString("ChkDistance%1").arg(band)));
                text += !box.isEnabled() ? '-' : box.isChecked() ? 'Y' : 'N';
            }
            return text;
        };
        QCOMPARE(ticks(), "YNYYYYYYYYYYYYYYY------");
        press(editor.screen, "OptMob1");
        QCOMPARE(ticks(), "YYYYY------------------");
        press(editor.screen, "OptMob2");
        QCOMPARE(ticks(), "-----YYYYYYYYYYYY------");
        editor.screen.findChild<uctDistance*>()->findChild<QToolButton*>("cmdNone")->click();
        press(editor.screen, "ChkDistance6");
        QCOMPARE(editor.save(), QStringList());
        QCOMPARE(editor.parameters().CallFilter(), 2);
        for (int band = 1; band <= 23; ++band)
            QCOMPARE(editor.parameters().DistanceBandSelected(band), band == 6);
    }

    void chosenBandsStay() {
        for (const int filter : {AllLinesAndMobiles, AllMobiles}) {
            Editor editor(*m_office, MobileReport, 195);
            editor.parameters().setCallFilter(filter);
            editor.parameters().setDistanceBandSelected(7, true);
            QVERIFY(editor.open());
            QVERIFY(editor.screen.findChild<QWidget*>("FrameDistance"));
            QVERIFY(child<QCheckBox>(editor.screen, "ChkDistance7").isEnabled());
            child<QLineEdit>(editor.screen, "txtCost0").setText("1");
            press(editor.screen, "OptSelect2");
            QCOMPARE(editor.save(), QStringList());
            for (int band = 1; band <= 23; ++band)
                QCOMPARE(editor.parameters().DistanceBandSelected(band), band == 7);
        }
    }

    /// A report made for fixed lines only must not keep a choice that takes mobiles in.
    void unofferedLinesAreReplaced() {
        Editor editor(*m_office, CallReport, 171); // L and V
        QVERIFY(editor.open());
        QVERIFY(child<QRadioButton>(editor.screen, "OptMob1").isChecked());
        QCOMPARE(editor.save(), QStringList());
        QCOMPARE(editor.parameters().CallFilter(), 1);
        QVERIFY(editor.parameters().DistanceBandSelected(1)); // no choice of bands: all that lines have
        QVERIFY(!editor.parameters().DistanceBandSelected(6));
    }
};

static const AnnounceTest<EditorGroupsTest> announced;

#include "EditorGroupsTest.moc"
