#include "params/Editor.h"
#include "reports/CallFilter.h"
#include "support/TestClass.h"

#include <QCheckBox>
#include <QRadioButton>

/// Which groups and line choices the editor shows for each report of the catalogue.
class EditorGroupsTest : public QObject {
    Q_OBJECT

    std::unique_ptr<Office> m_office;

    static QStringList framesOf(int type, const QString& flags, int id) {
        const auto offers = [&](int position) { return flags.mid(position - 1, 1) == "Y"; };
        const bool circuits = type == 3;
        QStringList frames;
        const auto add = [&](bool shown, const char* frame) {
            if (shown) frames << frame;
        };
        add((type == 2 || type == 5) && (id == 142 || id == 143 || id == 146), "FrameNumbers");
        add(offers(1), "FrameDates");
        add(offers(2), "FrameTimes");
        add(offers(3) && !circuits, "FrameDistance");
        add(offers(4), "FrameThresholds");
        add(offers(5), "FrameCC");
        add(offers(6), "FrameLinkvale");
        add(circuits ? offers(3) : offers(7), "FrameCircuits");
        add(circuits && offers(7), "FrameSelectedCircuit");
        add(offers(8), "frameSourceBill");
        add(offers(9), "FrameWPParams");
        add(type == 5 && (id == 191 || id == 192), "FrameCallTagging");
        add(offers(10), "frameExclusions");
        add(type == 2 && offers(11), "FrameCallClasses");
        return frames;
    }

private slots:
    void init() {
        if (!m_office) m_office = std::make_unique<Office>();
    }

    void everyReport_data() {
        QTest::addColumn<int>("type");
        QTest::addColumn<int>("id");
        QTest::addColumn<QString>("options");
        for (int type = BillingReport; type <= MobileReport; ++type)
            for (const CatalogueEntry* entry : catalogueEntries(type, ListChoice::forLookUp(type, true)))
                QTest::addRow("%d %d", type, entry->id) << type << entry->id << entry->options();
    }
    void everyReport() {
        QFETCH(const int, type);
        QFETCH(const int, id);
        QFETCH(const QString, options);
        const QStringList words = options.split(' ');
        const QString lines = words.size() == 3 ? words[1] : QString();
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
                shown << frame;
        QCOMPARE(shown, framesOf(type, words[0], id));

        QString enabled;
        for (const auto& [filter, letter] : {std::pair{1, 'L'}, {0, 'M'}, {2, 'm'}, {4, 'V'}, {3, 'D'}}) {
            const auto* option = editor.screen.findChild<QRadioButton*>(QString("OptMob%1").arg(filter));
            QCOMPARE(option != nullptr, !lines.isEmpty());
            if (option && option->isEnabled()) enabled += QLatin1Char(letter);
        }
        QCOMPARE(enabled, QString(lines).replace("M", "Mm"));
        QCOMPARE(editor.screen.findChild<QWidget*>("cmbSummaryLevel") != nullptr,
                 type == BillingReport && shown.contains("FrameCC"));
        if (shown.contains("FrameCC"))
            QCOMPARE(child<QRadioButton>(editor.screen, "OptSelect1").text().remove('&'),
                     type == MobileReport ? "Selected Handset" : "Selected Service No");
        QVERIFY(editor.screen.minimumSizeHint().width() <= 1366);
        QVERIFY(editor.screen.minimumSizeHint().height() <= 700);
        QCOMPARE(m_office->shown(), QStringList());
    }

    void reportWithoutEntry() {
        Editor editor(*m_office, CallReport, 999);
        QVERIFY(editor.open());
        QVERIFY(!editor.screen.findChild<QWidget*>("FrameDates"));
        QVERIFY(child(editor.screen, "lblNoGroups").isVisible());
    }

    void callClassesOnlyWithUnclassedCalls() {
        const auto office = std::move(m_office); // of no use to others afterwards
        office->db().execute(sql("UPDATE Brightwater.dbo.TblMobCalls SET CallClass = 'SMS'"));
        Editor editor(*office, CallReport, 111);
        QVERIFY(editor.open());
        QVERIFY(!editor.screen.findChild<QWidget*>("FrameCallClasses"));
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
            if (auto* option = editor.screen.findChild<QRadioButton*>("OptSelect1")) option->click();
            if (auto* option = editor.screen.findChild<QRadioButton*>("OptSelect8")) option->click();
            if (auto* option = editor.screen.findChild<QRadioButton*>("OptSelect0")) option->click();
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
        press(editor.screen, "cmdNoBands");
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
