#include "Screens.h"

#include "numbers/frmExcludeNumbers.h"
#include "parameters/frmSelectParameters.h"
#include "projects/modProjects.h"
#include "support/Rows.h"
#include "support/TestClass.h"
#include "templates/frmTemplate.h"
#include "ui/uctCheckList.h"

#include <QPushButton>
#include <QRadioButton>
#include <QTreeView>

/// The template editor, through its own buttons down to the rows.
class FrmTemplateTest : public QObject {
    Q_OBJECT

    struct Editor : TemplateProgram {
        std::unique_ptr<frmTemplate> screen;

        using TemplateProgram::TemplateProgram;
        int show(int templateId) {
            screen = std::make_unique<frmTemplate>(context);
            const int result = screen->Setup(templateId);
            screen->SetCallback(&caller, "Calledback");
            screen->show();
            screen->activateWindow();
            [this] { QVERIFY(QTest::qWaitForWindowActive(screen.get())); }(); // shortcuts work nowhere else
            return result;
        }
        uctListView& list() { return child<uctListView>(*screen, "lstReports"); }
        QLineEdit& title() { return child<QLineEdit>(*screen, "txtTemplate"); }
        void add(int type, const QString& words) {
            inNextModal<frmReport>([=](frmReport& report) {
                chooseReport(report, type, words);
                press(report, "cmdSave");
            });
            press(*screen, "cmdAdd");
        }
        /// Edits the selected report and selects the first service numbers of the list for it.
        void selectNumbers(int count) {
            inNextModal<frmReport>([=](frmReport& report) {
                inNextModal<frmSelectParameters>([=](frmSelectParameters& parameters) {
                    child<QRadioButton>(parameters, "OptSelect1").click();
                    auto& model =
                        *child<uctCheckList>(parameters, "lstAccounts").findChild<QTreeView*>()->model();
                    for (int i = 0; i < count; ++i)
                        model.setData(model.index(i, 0), Qt::Checked, Qt::CheckStateRole);
                    press(parameters, "cmdSave");
                });
                press(report, "cmdParameters");
                press(report, "cmdSave");
            });
            press(*screen, "cmdEdit");
        }
        bool closedWithCallback() { return !screen->isVisible() && caller.calls == 1; }
    };

private slots:
    void aNewTemplateIsMadeFromNothing() {
        Editor editor;
        QCOMPARE(editor.show(-1), 0);
        QVERIFY(!child<QToolButton>(*editor.screen, "cmdSaveAs").isVisible());
        QCOMPARE(child<QLineEdit>(*editor.screen, "txtUnitab").text(), "BW10023");
        QCOMPARE(child<QLineEdit>(*editor.screen, "txtBillType").text(), "Norva Unitab");
        editor.title().setText("   ");
        press(*editor.screen, "cmdSave");
        editor.title().setText("O'Brien's \"Ελλάδα\" [50%]; --");
        editor.add(1, "vat");
        editor.add(2, "longest");
        QCOMPARE(texts(editor.list(), 1), (QStringList{"Summary Report", "Itemised Call Report"}));
        QVERIFY(texts(editor.list(), 2).first().startsWith("Output to Excel"));
        press(*editor.screen, "cmdSave");
        QCOMPARE(editor.shown(), QStringList{"Please enter a Template name"});
        QVERIFY(editor.closedWithCallback());
        const int id = editor.idOf("O'Brien's ''Ελλάδα'' [50%]; --");
        QVERIFY(id > 0 && editor.screen->ID() == id);
        QCOMPARE(editor.reports(id).size(), 2);
        QVERIFY(editor.reports(id).first().startsWith("1/212/E"));
        QCOMPARE(editor.show(id), 0);
        QCOMPARE(editor.title().text(), "O'Brien's \"Ελλάδα\" [50%]; --");
    }

    void aNewTemplateCanBeForAnotherProject() {
        Editor editor;
        editor.show(-1);
        chooseProject("Harcourt");
        press(*editor.screen, "cmdOpen");
        QCOMPARE(child<QLineEdit>(*editor.screen, "txtUnitab").text(), "HL20417");
        QCOMPARE(child<QLineEdit>(*editor.screen, "txtBillType").text(), "Linkvale");
        editor.shown(); // the projects that were left out
        editor.add(4, "recurring");
        QVERIFY(!child<QPushButton>(*editor.screen, "cmdOpen").isEnabled());
        editor.title().setText("Charges");
        press(*editor.screen, "cmdSave");
        QCOMPARE(editor.shown(), QStringList());
        QCOMPARE(editor.show(editor.idOf("Charges")), 0);
        QVERIFY(!child<QPushButton>(*editor.screen, "cmdOpen").isVisible());
    }

    /// A template that was stored while its project's bills did not tell their kind.
    void anUnknownBillTypeFollowsTheProject() {
        Editor editor;
        const int id = editor.addTemplate("Early", "bw10023", 0);
        editor.show(id);
        QCOMPARE(child<QLineEdit>(*editor.screen, "txtBillType").text(), "Norva Unitab");
        editor.add(1, "vat");
        press(*editor.screen, "cmdSave");
        QVERIFY(editor.closedWithCallback());
        QCOMPARE(editor.scalar(
                     sql("SELECT BillType FROM NorvaScheduler.dbo.tblTemplate WHERE TemplateID = {}", id)),
                 1);
    }

    void anotherAccountsProjectHasNoSay() {
        Editor editor(Session::serverLoginName, "O'Dowd Freight"); // IDC bills
        editor.show(-1);
        editor.add(5, "management");
        editor.title().setText("Abroad");
        press(*editor.screen, "cmdSave");
        const int id = editor.idOf("Abroad");
        const auto stored = [&](const Sql& condition) {
            return editor.scalar(
                sql("SELECT COUNT(*) FROM NorvaScheduler.dbo.tblTemplate_Report WHERE TemplateID = {} "
                    "AND {}",
                    id, condition));
        };
        QCOMPARE(stored(sql("Distance1 = 1 AND Distance17 = 1 AND Distance18 = 1 AND Distance23 = 1")), 1);
        editor.db().execute(
            sql("UPDATE NorvaScheduler.dbo.tblTemplate SET DefaultDates = 1 WHERE TemplateID = {}", id));
        editor.db().execute(sql("UPDATE NorvaScheduler.dbo.tblTemplate_Report SET DateStart = '20100203', "
                                "Distance1 = 0 WHERE TemplateID = {}",
                                id));
        openProject(editor.session, "Brightwater");
        editor.show(id);
        QVERIFY(texts(editor.list(), 2).first().contains("Project Default Dates"));
        QVERIFY(!texts(editor.list(), 2).first().contains("Distance Bands"));
        press(*editor.screen, "cmdDuplicate");
        press(*editor.screen, "cmdSave");
        QCOMPARE(stored(sql("DateStart = '20100203'")), 2);
    }

    /// The numbers of a template that is given up must not fall to the next new one.
    void aNewTemplateThatIsGivenUpLeavesNoNumbers() {
        Editor editor;
        const auto excludeAsAnother = [&](const QString& number) {
            editor.db().execute(
                sql("INSERT INTO NorvaScheduler.dbo.TblExcludedNumbers (TemplateID, TelNo) VALUES (-1, {})",
                    number));
        };
        const auto exclude = [&](const QString& number) {
            frmExcludeNumbers screen(editor.context);
            QCOMPARE(screen.Setup(-1), 0);
            child<QLineEdit>(screen, "txtNumber").setText(number);
            press(screen, "cmdAdd");
            press(screen, "cmdOk");
        };
        const auto left = [&] {
            return editor.scalar(
                sql("SELECT COUNT(*) FROM NorvaScheduler.dbo.TblExcludedNumbers WHERE TemplateID = -1"));
        };
        excludeAsAnother("0700");
        editor.show(-1);
        excludeAsAnother("0701"); // while this one is open
        exclude("0800");
        press(*editor.screen, "cmdExit"); // nothing else was entered
        QCOMPARE(left(), 2);

        editor.show(-1);
        editor.title().setText("Given up");
        exclude("0800");
        editor.messages.answer(false);
        press(*editor.screen, "cmdExit");
        QCOMPARE(left(), 3);
        editor.messages.answer(true);
        press(*editor.screen, "cmdExit");
        QCOMPARE(left(), 2);
        QVERIFY(!editor.screen->isVisible());
    }

    void theOrderShownIsTheOrderSaved() {
        Editor editor;
        const int id = editor.addTemplate("Order");
        for (const int report : {211, 212, 213, 214}) editor.addReport(id, 1, report);
        editor.show(id);
        editor.list().selectId(4);
        QTest::keyClick(editor.screen.get(), Qt::Key_Up, Qt::AltModifier);
        press(*editor.screen, "cmdUp"); // 211 214 212 213
        editor.list().selectId(1);
        QVERIFY(!child<QToolButton>(*editor.screen, "cmdUp").isEnabled());
        editor.list().selectIds({1, 3});
        press(*editor.screen, "cmdDown"); // 214 213 211 212
        QCOMPARE(editor.list().selectedIds(), (QList<int>{3, 4}));
        emit editor.list().rowsDropped(0);
        emit editor.list().rowsDropped(4);
        editor.list().selectId(2);
        emit editor.list().rowsDropped(4); // 214 211 212 213
        editor.list().selectId(2);
        press(*editor.screen, "cmdDuplicate"); // 214 211 211 212 213
        editor.list().selectId(4);
        QTest::keyClick(&editor.list(), Qt::Key_Down, Qt::ShiftModifier);
        editor.messages.answer(true);
        QTest::keyClick(&editor.list(), Qt::Key_Delete); // 214 211 211
        QCOMPARE(editor.shown(), QStringList{"Are you sure you want to delete the 2 selected reports?"});
        editor.list().setFocus();
        QTest::keyClick(&editor.list(), Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(editor.list().model()->rowCount(), 5);
        QTest::keyClick(&editor.list(), Qt::Key_End);
        QTest::keyClick(&editor.list(), Qt::Key_Up, Qt::ShiftModifier);
        editor.messages.answer(true);
        QTest::keyClick(&editor.list(), Qt::Key_Delete); // once more
        editor.shown();
        editor.messages.answer(false);
        press(*editor.screen, "cmdDelete");
        QCOMPARE(editor.shown(), QStringList{"Are you sure you want to delete the selected report?"});
        press(*editor.screen, "cmdSave");
        QCOMPARE(editor.reports(id).size(), 3);
        QVERIFY(editor.reports(id)[0].startsWith("1/214/") && editor.reports(id)[2].startsWith("1/211/"));

        editor.show(id);
        ListViewUnselect(editor.list());
        for (const char* button : {"cmdDelete", "cmdEdit", "cmdDuplicate"})
            QVERIFY(!child(*editor.screen, button).isEnabled());
        QTest::keyClick(&editor.list(), Qt::Key_Delete);
        QCOMPARE(editor.shown(), QStringList{"You must select a report to delete."});
    }

    void severalValuesBecomeSeveralReports() {
        Editor editor;
        const int id = editor.addTemplate("Fan-out");
        editor.addReport(id, 1, 211);
        editor.addReport(id, 2, 161);
        editor.addReport(id, 1, 212);
        editor.show(id);
        editor.list().selectId(2);
        editor.selectNumbers(3);
        QCOMPARE(editor.list().model()->rowCount(), 5); // the three stand for the edited one, at the end
        QCOMPARE(editor.list().selectedId(), std::optional(3));
        press(*editor.screen, "cmdSave");
        const QStringList reports = editor.reports(id);
        QCOMPARE(reports.size(), 5);
        QSet<QString> numbers;
        for (const QString& report : reports.mid(2)) {
            QVERIFY(report.startsWith("2/161/E/") && !report.contains('|'));
            numbers << report.section('/', 3);
        }
        QCOMPARE(numbers.size(), 3);
    }

    void savingIsAllOrNothing() {
        for (const bool copies : {false, true}) {
            Editor editor;
            const int id = editor.addTemplate("Sweep");
            editor.addReport(id, 2, 161);
            editor.addSchedule(id, 0, "");
            const QStringList before = editor.everything();
            editor.show(id);
            editor.title().setText("Swept");
            editor.selectNumbers(2);
            int step = 0;
            do {
                QCOMPARE(editor.everything(), before);
                QCOMPARE(editor.title().text(), "Swept");
                QCOMPARE(editor.list().model()->rowCount(), 2);
                QVERIFY(!QGuiApplication::overrideCursor());
                if (step > 0) QCOMPARE(editor.shown().last(), "Error saving template");
                if (copies && editor.messages.finished()) editor.messages.type("Copy");
                if (!copies && editor.messages.finished()) editor.messages.answer(true);
                editor.fault.arm(++step);
                press(*editor.screen, copies ? "cmdSaveAs" : "cmdSave");
            } while (editor.screen->isVisible() && step < 50);
            QVERIFY(step > 5 && editor.closedWithCallback());
            QCOMPARE(editor.reports(editor.idOf(copies ? "Copy" : "Swept")).size(), 2);
            QCOMPARE(editor.reports(id).size(), copies ? 1 : 2);
        }
    }

    void newTitles_data() {
        const Rows<QString, bool, QString, QString> row;
        const QString a49 = QString(49, 'a');
        const QString tooLong =
            "The selected template title is too long and will be truncated to \n'%1'\nAre you "
            "sure you want to continue?";
        row("blanks", "  ", false, "", "");
        row("trimmed", "  New 'one' ", false, "", "New 'one'");
        row("50", a49 + "b", false, "", a49 + "b");
        row("51, No", a49 + "bc", false, tooLong.arg(a49 + "b"), "");
        row("51, Yes", a49 + "bc", true, tooLong.arg(a49 + "b"), a49 + "b");
        row("never half a letter", a49 + "😀c", true, tooLong.arg(a49), a49);
        row("10,000", a49 + "b" + QString(10'000, 'x'), true, tooLong.arg(a49 + "b"), a49 + "b");
        row("in use", "invoice ONLY", false, "Error saving template, title already exists", "");
    }

    void newTitles() {
        const auto [typed, agree, message, saved] = thisRow<QString, bool, QString, QString>();
        Editor editor;
        editor.show(editor.idOf("Weekly call review"));
        const int before = editor.scalar(sql("SELECT COUNT(*) FROM NorvaScheduler.dbo.tblTemplate"));
        editor.messages.type(typed);
        if (message.contains("truncated")) editor.messages.answer(agree);
        press(*editor.screen, "cmdSaveAs");
        QStringList expected{"Please enter a new template title"};
        if (!message.isEmpty()) expected << message;
        QCOMPARE(editor.shown(), expected);
        QCOMPARE(editor.closedWithCallback(), !saved.isEmpty());
        QCOMPARE(editor.scalar(sql("SELECT COUNT(*) FROM NorvaScheduler.dbo.tblTemplate")),
                 before + (saved.isEmpty() ? 0 : 1));
        if (!saved.isEmpty()) QCOMPARE(editor.reports(editor.idOf(saved)).size(), 4);
    }

    void savingAsks() {
        Editor editor;
        const int id = editor.idOf("Weekly call review");
        editor.addSchedule(id, 0, "");
        editor.show(id);
        for (const QString& count :
             {QString("There is 1 active schedule"), QString("There are 2 active schedules")}) {
            editor.messages.answer(false);
            press(*editor.screen, "cmdSave");
            QCOMPARE(
                editor.shown(),
                QStringList{count + " using this template, are you sure you want to save your changes?"});
            QVERIFY(editor.screen->isVisible());
            editor.addSchedule(id, 0, "");
        }
    }

    void titlesThatCannotBeSavedStay() {
        Editor editor;
        const QStringList before = editor.everything();
        editor.show(editor.idOf("Weekly call review"));
        for (const auto& [title, message] :
             {std::pair{QString("Invoice only"), "Template name already exists"},
              {QString(10'000, '"'),
               "The template name is too long: 20000 characters were entered, 100 fit."}}) {
            editor.title().setText(title);
            press(*editor.screen, "cmdSave");
            QCOMPARE(editor.shown(), QStringList{message});
            QVERIFY(editor.screen->isVisible() && editor.title().text() == title);
        }
        QCOMPARE(editor.everything(), before);
    }

    void aReportWithoutOutputIsShown() {
        Editor editor;
        const int id = editor.addTemplate("No output");
        editor.addReport(id, 2, 161);
        editor.addReport(id, 2, 162, false);
        editor.show(id);
        QVERIFY(texts(editor.list(), 2).last().contains("No output !!! : Email Files:"));
        press(*editor.screen, "cmdSave");
        QCOMPARE(editor.shown(),
                 QStringList{"You have a report with no output, please either remove the report "
                             "or specify an output option."});
        QCOMPARE(editor.list().selectedId(), std::optional(2));
    }

    void reportsOfOtherWorldsAreKept_data() {
        const Rows<int, int, QString> row;
        row("gone from the catalogue", 2, 999, "Unknown Report");
        row("of an unknown type", 9, 1, "Unknown Report");
        row("mobile", 5, 194, "Management Summary");
        row("Wispera", 2, 131, "Wispera Reports - All Call Records");
        row("not for Linkvale", 2, 116, "100 Most Expensive - Roamed From Mobile");
    }

    void reportsOfOtherWorldsAreKept() {
        const auto [type, report, title] = thisRow<int, int, QString>();
        Editor editor(Session::serverLoginName, "Harcourt-Lisle"); // a Linkvale project without Wispera
        const int id = editor.addTemplate("Other worlds", "HL20417", 2);
        editor.addReport(id, type, report);
        editor.show(id);
        QCOMPARE(texts(editor.list()), QStringList{title});
        QVERIFY(texts(editor.list(), 2).first().contains("Output to Excel :"));
        inNextModal<frmReport>([](frmReport& screen) { press(screen, "cmdSave"); });
        press(*editor.screen, "cmdEdit");
        press(*editor.screen, "cmdSave");
        QVERIFY2(editor.closedWithCallback(), qPrintable(editor.shown().join('|')));
        QCOMPARE(editor.reports(id), QStringList{QString("%1/%2/E/Sales").arg(type).arg(report)});
    }

    void anotherUserWasThere() {
        Editor editor;
        const int id = editor.idOf("Weekly call review");
        editor.show(id);
        editor.title().setText("Mine");
        editor.addReport(id, 1, 215);
        const QStringList theirs = editor.everything();
        for (const bool overwrite : {false, true}) {
            editor.messages.answer(overwrite);
            press(*editor.screen, "cmdSave");
            QVERIFY(editor.shown().first().startsWith("Another user changed this template"));
            QCOMPARE(editor.closedWithCallback(), overwrite);
            QCOMPARE(editor.everything() == theirs, !overwrite);
            QCOMPARE(editor.reports(id).size(), overwrite ? 4 : 5);
        }
    }

    void aTemplateThatIsGoneIsSavedAsAnother() {
        Editor editor;
        const int id = editor.idOf("Weekly call review");
        editor.show(id);
        editor.db().execute(sql("DELETE FROM NorvaScheduler.dbo.tblTemplate WHERE TemplateID = {}", id));
        press(*editor.screen, "cmdSave");
        QVERIFY(editor.shown().first().startsWith("The template was deleted by another user."));
        editor.messages.type("Saved after all");
        press(*editor.screen, "cmdSaveAs");
        QVERIFY(editor.closedWithCallback());
        QCOMPARE(editor.reports(editor.idOf("Saved after all")).size(), 4);
        QVERIFY(editor.show(id) != 0);
    }

    void editingAReportNeedsItsProject() {
        Editor editor(Session::serverLoginName, "Harcourt-Lisle");
        editor.show(editor.idOf("Invoice only"));
        const QString refusal = "Please select a project with the bill account of 'BW10023' to continue.";
        chooseProject("");
        press(*editor.screen, "cmdEdit");
        chooseProject("O'Dowd");
        press(*editor.screen, "cmdAdd");
        QCOMPARE(editor.shown().count(refusal), 2);
        chooseProject("Brightwater");
        inNextModal<frmReport>([](frmReport& report) { press(report, "cmdCancel"); });
        press(*editor.screen, "cmdEdit");
        QVERIFY(!editor.shown().contains(refusal) && editor.session.project.unitabAccount == "BW10023");
        press(*editor.screen, "cmdExit");
        QVERIFY(editor.closedWithCallback());
    }

    void defaultDatesAreShownAtOnce() {
        Editor editor;
        editor.show(editor.idOf("Weekly call review"));
        child<QRadioButton>(*editor.screen, "optDate0").click();
        QVERIFY(texts(editor.list(), 2).first().contains("Project Default Dates"));
        QVERIFY(editor.session.project.edited.useDefaultDates);
        child<QRadioButton>(*editor.screen, "optDate1").click();
        QVERIFY(!texts(editor.list(), 2).first().contains("Project Default Dates"));
        editor.messages.answer(true);
        editor.screen->close();
        QCOMPARE(editor.shown(), QStringList{"Are you sure you want to cancel your changes?"}); // asked once
        QVERIFY(editor.closedWithCallback());
    }
};

static const AnnounceTest<FrmTemplateTest> announced;
#include "FrmTemplateTest.moc"
