#include "numbers/frmRangeSel.h"
#include "parameters/Editor.h"
#include "reports/describe.h"
#include "support/Modal.h"
#include "support/Rows.h"
#include "support/TestClass.h"
#include "templates/clsTemplate.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTimeEdit>
#include <QTreeView>

namespace {

void tickFirst(QWidget& list) {
    QAbstractItemModel& entries = *child<QTreeView>(list, "lstEntries").model();
    if (entries.rowCount() > 0) entries.setData(entries.index(0, 0), Qt::Checked, Qt::CheckStateRole);
}

void chooseLast(QComboBox& box) {
    box.setCurrentIndex(box.count() - 1);
    emit box.activated(box.currentIndex());
}

} // namespace

/// What is set in the parameter editor is stored, comes back, and is not changed by saving it again.
class EditorRoundTripTest : public QObject {
    Q_OBJECT

    std::unique_ptr<Office> m_office;

    /// Gives every group on show another value than it has.
    void setEverything(QWidget& screen) {
        const auto in = [&](const char* frame, const std::function<void(QWidget&)>& set) {
            if (auto* shown = screen.findChild<QWidget*>(frame)) set(*shown);
        };
        in("FrameNumbers", [](QWidget& group) {
            inNextModal<frmRangeSel>([](frmRangeSel& numbers) {
                type(numbers, "txtNumber", "01234 567890");
                press(numbers, "cmdOk");
            });
            group.findChild<QPushButton*>()->click();
        });
        in("FrameDates", [](QWidget& group) {
            child<QDateEdit>(group, "dtStart").setDate(QDate(2026, 9, 2));
            child<QDateEdit>(group, "dtEnd").setDate(QDate(2026, 10, 30));
            press(group, "ChkDay3");
        });
        in("FrameTimes", [](QWidget& group) {
            child<QTimeEdit>(group, "dtTimeStart").setTime(QTime(18, 30));
            child<QTimeEdit>(group, "dtTimeEnd").setTime(QTime(8, 15, 1));
            press(group, "ChkOverNight");
        });
        in("FrameMob", [](QWidget& group) {
            for (auto* option : group.findChildren<QRadioButton*>())
                if (option->isEnabled() && !option->isChecked()) return option->click();
        });
        in("FrameDistance", [](QWidget& group) {
            for (auto* band : group.findChildren<QCheckBox*>())
                if (band->isEnabled() && band->isChecked()) return band->click();
        });
        in("FrameThresholds", [](QWidget& group) {
            child<QLineEdit>(group, "txtCost0").setText("0.50");
            child<QLineEdit>(group, "txtCost1").setText("99.99");
            child<QLineEdit>(group, "txtDuration0").setText("1");
            child<QLineEdit>(group, "txtDuration1").setText("60");
        });
        in("FrameCC", [](QWidget& group) {
            press(group, "OptSelect4");
            tickFirst(child(group, "lstAccounts"));
            if (auto* level = group.findChild<QComboBox*>("cmbSummaryLevel")) chooseLast(*level);
        });
        in("FrameLinkvale", [](QWidget& group) { child<QLineEdit>(group, "txtBillNumber").setText("LV 7"); });
        for (const char* frame : {"FrameCircuits", "FrameSelectedCircuit", "frameSourceBill", "FrameWPParams",
                                  "FrameCallTagging"})
            in(frame, [](QWidget& group) { chooseLast(*group.findChild<QComboBox*>()); });
        in("FrameCallClasses", [](QWidget& group) { tickFirst(child(group, "lstCallClasses")); });
    }

    QStringList savedAndLoaded(const clsReport& report) {
        clsTemplate made(m_office->db(), m_office->program.session.project);
        made.setTitle(QString("Round %1").arg(++m_templates));
        QString key;
        made.Reports().Add(0, report.Parameters(), report.ReportType(), report.ReportSubType(), true, false,
                           false, key);
        clsTemplate loaded(m_office->db(), m_office->program.session.project);
        if (made.SaveTemplate() != clsTemplate::Saved || !loaded.LoadTemplate(made.ID())) return {};
        return describe(*loaded.Reports().Item(1).Parameters());
    }

    int m_templates = 0;

private slots:
    void initTestCase() {
        m_office = std::make_unique<Office>();
        m_office->db().execute(sql("UPDATE Brightwater.dbo.TblMobCalls SET CallClass = '' WHERE RecID = "
                                   "(SELECT MIN(RecID) FROM Brightwater.dbo.TblMobCalls)"));
    }

    void everyReport_data() {
        const Rows<int, int> row;
        for (int type = BillingReport; type <= MobileReport; ++type)
            for (const CatalogueEntry* entry : catalogueEntries(type, ListChoice::forLookUp(type, true)))
                row(QString("%1 %2").arg(type).arg(entry->id), type, entry->id);
    }
    void everyReport() {
        const auto [type, id] = thisRow<int, int>();
        Editor first(*m_office, type, id);
        const QStringList untouched = describe(first.parameters());
        QVERIFY(first.open());
        QVERIFY(first.screen.minimumSizeHint().width() <= 1366
                && first.screen.minimumSizeHint().height() <= 700);
        setEverything(first.screen);
        QCOMPARE(first.save(), QStringList());
        const QStringList set = describe(first.parameters());
        const bool offers = first.screen.findChild<QWidget*>("lstGroups")->isVisibleTo(&first.screen);
        QCOMPARE(set != untouched, offers);
        QCOMPARE(savedAndLoaded(first.report), set);

        Editor again(*m_office, type, id);
        again.report.setParameters(first.report.Parameters()->Clone());
        QVERIFY(again.open());
        QCOMPARE(again.save(), QStringList());
        QCOMPARE(savedAndLoaded(again.report), set);
    }
};

static const AnnounceTest<EditorRoundTripTest> announced;

#include "EditorRoundTripTest.moc"
