#include "Screens.h"

#include "parameters/frmBillSelection.h"
#include "parameters/frmSelectParameters.h"
#include "reports/ReportTypes.h"
#include "support/Rows.h"
#include "support/TestClass.h"
#include "ui/uctCheckList.h"

#include <QLabel>
#include <QTextEdit>
#include <QTreeView>

/// The report editor and the report chooser.
class FrmReportTest : public QObject {
    Q_OBJECT

    struct Editor : TemplateProgram {
        std::unique_ptr<frmReport> screen;

        using TemplateProgram::TemplateProgram;
        int show(int billType, const clsReport* report = nullptr) {
            screen = std::make_unique<frmReport>(context);
            const int result = screen->Setup(billType, report, -1);
            screen->SetCallback(&caller, "Calledback");
            screen->show();
            return result;
        }
        clsReport report(int type, int subType) {
            clsReport report(session.project);
            report.setReportType(type);
            report.setReportSubType(subType);
            report.setOutputExcel(true);
            return report;
        }
        QCheckBox& box(const QString& name) { return child<QCheckBox>(*screen, name); }
        /// "E", "C" and "M" of the ticked outputs.
        QString outputs() {
            return QString(box("chkExcel").isChecked() ? "E" : "") + (box("chkCSV").isChecked() ? "C" : "")
                   + (box("chkEmailFiles").isChecked() ? "M" : "");
        }
        uctListView& parameters() { return child<uctListView>(*screen, "lstParameters"); }
        QString valueOf(const QString& caption) {
            return texts(parameters(), 1).value(texts(parameters()).indexOf(caption));
        }
        bool stands(const QString& caption) {
            const int row = int(texts(parameters()).indexOf(caption));
            return parameters().model()->index(row, 0).data(Qt::BackgroundRole).isValid();
        }
    };

private slots:
    void aReportIsChosenByTyping() {
        Editor editor;
        editor.session.options = {{}, false, true};
        editor.show(1);
        QCOMPARE(child<QLabel>(*editor.screen, "lblTitle").text(), "Create a report");
        QVERIFY(!child<QAbstractButton>(*editor.screen, "cmdReports").isEnabled());
        press(*editor.screen, "cmdSave");
        chooseReport(*editor.screen, 2, "frequent mobiles");
        QCOMPARE(texts(child<uctListView>(*editor.screen, "lstReports")),
                 QStringList{"100 Most Frequent - Calls to Mobiles"});
        QCOMPARE(editor.outputs(), "C"); // what the options give a new report
        chooseReport(*editor.screen, 2, "trends");
        QCOMPARE(editor.outputs(), "E"); // call trends cannot be written as CSV
        QVERIFY(!editor.box("chkCSV").isEnabled());
        press(*editor.screen, "cmdSave");
        QCOMPARE(editor.shown(), QStringList{"Please select a report type"});
        QVERIFY(editor.caller.calls == 1 && editor.screen->Report().ReportSubType() == 164);
    }

    void theChooserDescribes() {
        Editor editor;
        frmSelectReports chooser(editor.context);
        QCOMPARE(chooser.Setup(3, 326), 0);
        QVERIFY(child<QTextEdit>(chooser, "lblDescription").toPlainText().contains("a Circuit ID Selection"));
        auto& filter = child<QLineEdit>(chooser, "txtFilter");
        filter.setText("no such report");
        QTest::keyClick(&filter, Qt::Key_Return);
        QCOMPARE(editor.shown(), QStringList{"You must select a report in the list."});
        filter.setText("exceptions");
        filter.clear();
        QTest::keyClick(&filter, Qt::Key_Down);
        QTest::keyClick(&filter, Qt::Key_Return);
        QCOMPARE(chooser.chosen()->id, 326); // the one after 325
        QVERIFY(frmSelectReports(editor.context).Setup(7, 0) != 0);
    }

    /// Neither the wheel nor a look at another type loses the report.
    void aTypeThatIsChosenAgainBringsItsReportBack() {
        Editor editor;
        clsReport report = editor.report(2, 161);
        report.Parameters()->setReportCaption("Dear calls");
        editor.show(1, &report);
        auto& types = child<QComboBox>(*editor.screen, "cmbType");
        turnWheel(types);
        QCOMPARE(types.currentData().toInt(), 2);
        editor.box("chkCSV").click();
        types.setCurrentIndex(types.findData(1));
        QCOMPARE(editor.valueOf("Report Caption"), "");
        types.setCurrentIndex(types.findData(2));
        QCOMPARE(editor.valueOf("Report Caption"), "Dear calls");
        QCOMPARE(editor.screen->Report().ReportSubType(), 161);
        QCOMPARE(editor.outputs(), "EC");
    }

    void anOutputStays() {
        Editor editor;
        clsReport report = editor.report(2, 161);
        report.setOutputCSV(true);
        editor.show(1, &report);
        editor.box("chkExcel").click();
        QVERIFY(editor.shown().isEmpty());
        editor.box("chkCSV").click();
        QCOMPARE(editor.shown(), QStringList{"You must have at least one output selected"});
        QCOMPARE(editor.outputs(), "C");
    }

    void emailNeedsADefaultAddress() {
        Editor editor;
        const clsReport report = editor.report(2, 161);
        for (const QString address : {"", "a@b.com"}) {
            editor.db().execute(sql("UPDATE NorvaScheduler.dbo.tblOptions SET DefaultEmail = {}", address));
            editor.show(1, &report);
            editor.box("chkEmailFiles").click();
            QCOMPARE(editor.outputs(), address.isEmpty() ? "E" : "EM");
        }
        QCOMPARE(editor.shown(), QStringList{"You must specify a default email address in the Email Options "
                                             "screen before emails can be sent."});
    }

    void valuesThatReportsNeed_data() {
        const Rows<int, int, QString> row;
        const QString numbers = "You have not selected any numbers for the '%1 Number' Report";
        row("calls from", 2, 143, numbers.arg("Calls From"));
        row("calls to", 2, 142, numbers.arg("Calls To"));
        row("calls not to", 2, 146, numbers.arg("Calls Not To"));
        row("circuit", 3, 326, "You have not selected a circuit for the 'Selected Circuit' Report");
        row("handset", 5, 196, "You have not selected a handset for the 'Selected Handset' Report");
    }

    void valuesThatReportsNeed() {
        const auto [type, report, refusal] = thisRow<int, int, QString>();
        Editor editor;
        clsReport edited = editor.report(type, report);
        edited.setOutputCSV(true);
        editor.show(1, &edited);
        press(*editor.screen, "cmdSave");
        QCOMPARE(editor.shown(), QStringList{refusal});
        QVERIFY(editor.screen->isVisible() && editor.caller.calls == 0);

        clsReportParameters& parameters = *edited.Parameters();
        parameters.setCallsFromNumber("1");
        parameters.setCallsToNumber("1");
        parameters.setCallsNotToNumber("1");
        parameters.setSelectedCircuitID("C");
        parameters.setAccountFilter(1);
        parameters.setServiceNumber("07700900123");
        editor.show(1, &edited);
        press(*editor.screen, "cmdSave");
        QVERIFY(editor.shown().isEmpty() && editor.caller.calls == 1);
    }

    void parametersInWords() {
        Editor editor;
        clsReport report = editor.report(2, 161);
        clsReportParameters& parameters = *report.Parameters();
        parameters.setReportCaption("Dear calls");
        parameters.setCostRangeMinimum("0.50");
        parameters.setDaySelected(1, false);
        parameters.setDistanceBandSelected(2, false);
        parameters.setAccountFilter(3);
        parameters.setCostCentre(1, "Sales|Marketing");
        parameters.setBillIds("12,112");
        editor.show(1, &report);
        QCOMPARE(texts(editor.parameters()).first(), "Report Caption");
        for (const char* caption : {"Report Caption", "Cost Above", "Call Days", "Distance Bands"})
            QVERIFY2(editor.stands(caption), caption);
        for (const char* caption : {"Report Header", "Cost Below", "Call Date To", "Calls From"})
            QVERIFY2(texts(editor.parameters()).contains(caption) && !editor.stands(caption), caption);
        QCOMPARE(editor.valueOf("Account Filter"), "Cost Centre 1 = Sales, Marketing");
        QCOMPARE(editor.valueOf("Selected Bills"), "12, 112");

        const clsReport invoice = editor.report(1, 211);
        editor.show(1, &invoice);
        QCOMPARE(texts(editor.parameters()),
                 (QStringList{"Report Caption", "Report Header", "Selected Bills"}));
        press(*editor.screen, "cmdParameters");
        QCOMPARE(editor.shown(), QStringList{"There are no parameters available for this report."});
    }

    void childScreensChangeTheReport() {
        Editor editor;
        const clsReport report = editor.report(2, 161);
        editor.show(1, &report);
        inNextModal<frmSelectParameters>([&](frmSelectParameters& screen) {
            editor.messages.type("Ångström's \"calls\"");
            press(screen, "cmdReportCaption");
            press(screen, "cmdSave");
        });
        press(*editor.screen, "cmdParameters");
        QCOMPARE(editor.valueOf("Report Caption"), "Ångström's \"calls\"");
        inNextModal<frmBillSelection>([](frmBillSelection& screen) {
            auto& model = *screen.findChild<uctCheckList*>()->findChild<QTreeView*>()->model();
            model.setData(model.index(0, 0), Qt::Unchecked, Qt::CheckStateRole);
            press(screen, "cmdOk");
        });
        press(*editor.screen, "cmdShowBillSelection");
        QVERIFY(editor.stands("Selected Bills"));

        editor.messages.answer(false);
        press(*editor.screen, "cmdCancel");
        QCOMPARE(editor.shown().last(), "Are you sure you want to cancel your changes?");
        QVERIFY(editor.screen->isVisible());
        editor.messages.answer(true);
        QTest::keyClick(editor.screen.get(), Qt::Key_Escape);
        QVERIFY(!editor.screen->isVisible() && editor.caller.calls == 0);
        QVERIFY(report.Parameters()->ReportCaption().isEmpty()); // it worked on a copy
    }

    void aRestrictedUsersReportsStayWithinHisCostCentres() {
        Editor editor;
        editor.session.userLevel = UserLevel::Restricted;
        editor.session.costCentres = {"Sales", "", "", "", ""};
        editor.show(1);
        chooseReport(*editor.screen, 2, "all calls summary");
        const clsReportParameters& parameters = *editor.screen->Report().Parameters();
        QCOMPARE(parameters.AccountFilter(), 0);
        QCOMPARE(parameters.CostCentre(1), "Sales");
    }
};

static const AnnounceTest<FrmReportTest> announced;
#include "FrmReportTest.moc"
