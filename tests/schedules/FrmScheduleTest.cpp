#include "schedules/frmSchedule.h"

#include "Screens.h"
#include "schedules/ProjectHistory.h"
#include "support/Modal.h"
#include "support/Rows.h"
#include "support/TestClass.h"
#include "templates/frmTemplate.h"
#include "templates/frmTransfer.h"
#include "ui/uctListView.h"

#include <QComboBox>
#include <QDateEdit>
#include <QLineEdit>

namespace {

using enum ScheduleStatus;

struct Editor : ScheduleScreen<frmSchedule> {
    using ScheduleScreen::ScheduleScreen;

    QLineEdit& title() { return control<QLineEdit>("txtTitle"); }
    QComboBox& templates() { return control<QComboBox>("cmbTemplate"); }
    QDateEdit& date() { return control<QDateEdit>("dtRunOn"); }
    QString focus() { return screen->focusWidget() ? screen->focusWidget()->objectName() : QString(); }
    void type(const QString& text) {
        title().clear();
        QTest::keyClicks(&title(), text);
    }
    /// As a user does by keyboard: down to the project in the history, Enter.
    void chooseRecent(const QString& project) {
        projectHistory::remember(program.session, project);
        if (!screen) show(clsSchedule::notStored);
        auto& history = control<uctListView>("lstHistory");
        history.setRows({{0, {project, ""}}});
        history.selectId(0);
        QTest::keyClick(&history, Qt::Key_Return);
    }
    /// A new schedule with all that a save needs.
    void fill(const QString& text) {
        chooseRecent("Brightwater");
        templates().setCurrentIndex(0);
        type(text);
    }
    void makeProject(const QString& name, bool withTable, bool withBill) {
        Connection& owner = program.other();
        program.addDatabase(name);
        if (withTable)
            owner.execute(
                sql("CREATE TABLE {}.dbo.Tbl50 (RecID int, BillID int, LocID int, Flags int, BillType int, "
                    "UnitabAccount varchar(20), CurrentUnitabAccount varchar(20), BillStart datetime, "
                    "BillEnd datetime)",
                    Name(name)));
        if (!withBill) return;
        owner.execute(
            sql("INSERT INTO {}.dbo.Tbl50 VALUES (1, 1, 1, 0, 1, N'BW10023', N'BW10023', N'20260101', "
                "N'20260131')",
                Name(name)));
        owner.execute(sql("CREATE TABLE {}.dbo.[BW10023_TblCC] (TelNo varchar(25))", Name(name)));
    }
};

const WallClock tomorrow = WallClock::now().addDays(1);

} // namespace

/// The schedule editor, used like a user does.
class FrmScheduleTest : public QObject {
    Q_OBJECT

private slots:
    void everyCheckHasItsMessageAndItsTurn() {
        Editor editor;
        QCOMPARE(editor.show(clsSchedule::notStored), 0);
        const auto refused = [&](const QString& message, const QString& field) {
            editor.press("cmdSave");
            return editor.shown() == QStringList(message) && editor.focus() == field;
        };
        QVERIFY(refused("Please enter a schedule title", "txtTitle"));
        editor.type("March");
        QVERIFY(refused("Please select a project", "cmdOpen"));
        editor.chooseRecent("Brightwater");
        QCOMPARE(editor.control<QLineEdit>("txtProject").text(), QString("Brightwater"));
        QVERIFY(refused("Please select a template", "cmbTemplate"));
        QVERIFY(!editor.control<QWidget>("cmdEditTemplate").isEnabled());
        editor.templates().setCurrentIndex(0);
        QVERIFY(editor.control<QWidget>("cmdEditTemplate").isEnabled());
        editor.date().setDate(QDate::currentDate().addDays(-1));
        QVERIFY(refused("The scheduled run date must be after todays date", "dtRunOn"));
        editor.date().setDate(QDate::currentDate());
        editor.control<QTimeEdit>("dtRunOnTime").setTime(QTime(0, 0)); // earlier today
        editor.press("cmdSave");
        QVERIFY(editor.shown().isEmpty() && editor.closedWithCallback());
        QCOMPARE(editor.rows(), QStringList("March|Brightwater|0|QuorraAdmin"));
    }

    void titles_data() {
        const Rows<QString, QString, QString> row;
        const QString odd =
            "The schedule title must consist of at least one alpha-numeric character (A-Z or 0-9)";
        const QString used = "Title already exists, please rename the schedule";
        row("blanks", "   ", "Please enter a schedule title", "");
        row("punctuation", "--", odd, "");
        row("50 letters", QString(50, 'a'), "", QString(50, 'a'));
        row("50 quotes and letters", QString("\"x").repeated(25), "", QString("''x").repeated(25));
        row("51 letters", QString(51, 'a'),
            "The schedule title is too long: 51 characters were entered, 50 fit.", "");
        row("quotes", "O'Brien's \"1\"", "", "O'Brien's ''1''");
        row("other letter case", "TAKEN", used, "");
        row("statement", "x'); DROP TABLE tblSchedule--", "", "x'); DROP TABLE tblSchedule--");
    }

    void titles() {
        const auto [title, message, stored] = thisRow<QString, QString, QString>();
        Editor editor;
        editor.add("Taken", Pending, tomorrow);
        editor.fill(title);
        editor.press("cmdSave");
        QCOMPARE(editor.shown(), message.isEmpty() ? QStringList() : QStringList(message));
        QCOMPARE(editor.closedWithCallback(), message.isEmpty());
        QCOMPARE(editor.title().text(), title);
        QCOMPARE(editor.rows().value(1).section('|', 0, 0), stored);
    }

    void savingKeepsStatusAndRanDate() {
        Editor editor;
        const int id = editor.add("Off", Disabled, WallClock(QDate(2037, 3, 29), QTime(1, 30, 58)));
        QCOMPARE(editor.show(id), 0);
        QCOMPARE(editor.date().date(), QDate(2037, 3, 29));
        QTest::keyClicks(&editor.title(), "!");
        QTest::keyClick(&editor.title(), Qt::Key_S, Qt::ControlModifier);
        QVERIFY(editor.closedWithCallback());
        QCOMPARE(editor.rows(), QStringList("Off!|Brightwater|1|QuorraAdmin"));
        QCOMPARE(editor.db().scalar(sql("SELECT RunDate FROM NorvaScheduler.dbo.tblSchedule")),
                 QString("2037-Mar-29 01:30:58"));
        QCOMPARE(editor.db().scalar(sql("SELECT RanDate FROM NorvaScheduler.dbo.tblSchedule")),
                 WallClock().stored());
    }

    void saveAsMakesANewPendingSchedule() {
        Editor editor;
        editor.show(editor.add("Off", Disabled, tomorrow));
        editor.program.messages.type("OFF");
        editor.press("cmdSaveAs");
        editor.program.messages.type(std::nullopt);
        editor.press("cmdSaveAs");
        editor.program.messages.type("Copy");
        editor.press("cmdSaveAs");
        const QString prompt = "Please enter a new schedule title";
        QCOMPARE(editor.shown(),
                 QStringList({prompt, "Title already exists, please rename the schedule", prompt, prompt}));
        QVERIFY(editor.closedWithCallback());
        QCOMPARE(editor.rows(),
                 QStringList({"Off|Brightwater|1|Amelia.Hart", "Copy|Brightwater|0|QuorraAdmin"}));
    }

    void onlyAStoredScheduleCanBeCopiedOrDeleted() {
        Editor editor;
        editor.show(clsSchedule::notStored);
        QVERIFY(!editor.control<QWidget>("cmdSaveAs").isVisible()
                && !editor.control<QWidget>("cmdDelete").isVisible());
        const int id = editor.add("Log", Pending, tomorrow);
        editor.addLog(id, 1, 0);
        editor.show(id);
        for (const bool yes : {false, true}) {
            editor.program.messages.answer(yes);
            editor.press("cmdDelete");
            QCOMPARE(editor.shown(), QStringList("are you sure you want to delete this schedule?"));
            QCOMPARE(editor.rows().isEmpty(), yes);
        }
        QVERIFY(editor.closedWithCallback());
        QCOMPARE(editor.logs(), 0);
        QCOMPARE(editor.show(id), int(clsSchedule::NotFound));
    }

    void aRunDateThatIsNoneIsTold() {
        Editor editor;
        const int id = editor.add("March", Pending, tomorrow);
        editor.db().execute(
            sql("UPDATE NorvaScheduler.dbo.tblSchedule SET RunDate = N'soon' WHERE ScheduleID = {}", id));
        editor.show(id);
        QCOMPARE(editor.shown(),
                 QStringList("The stored run date 'soon' is no date. Please check the date that is "
                             "shown before you save."));
        QCOMPARE(editor.date().date(), QDate::currentDate());
    }

    void cancelAsksOnlyAfterChanges() {
        Editor editor;
        const int id = editor.add("March", Pending, tomorrow);
        editor.show(id);
        QTest::keyClick(editor.screen.get(), Qt::Key_Escape);
        QVERIFY(editor.shown().isEmpty() && editor.closedWithCallback());
        editor.show(id);
        auto& time = editor.control<QTimeEdit>("dtRunOnTime");
        time.setTime(time.time().addSecs(3600));
        editor.program.messages.answer(false);
        editor.press("cmdExit");
        QVERIFY(editor.screen->isVisible());
        editor.program.messages.answer(true);
        editor.press("cmdExit");
        QVERIFY(!editor.screen->isVisible());
        QCOMPARE(editor.shown(), QStringList(2, "Are you sure you want to cancel your changes?"));
    }

    void othersAreNotOverwrittenInSilence_data() {
        const Rows<QString, bool, QString, QStringList> row;
        const QString rename = "UPDATE NorvaScheduler.dbo.tblSchedule SET ScheduleTitle = N'Theirs'";
        const QString status = "UPDATE NorvaScheduler.dbo.tblSchedule SET Status = ";
        const QStringList mine("Mine|Brightwater|0|QuorraAdmin");
        row("changed, kept", rename, false, "changed by 'Amelia.Hart'.*title is now 'Theirs'",
            QStringList("Theirs|Brightwater|0|Amelia.Hart"));
        row("changed, overwritten", rename, true, "overwrite", mine);
        row("deleted", "DELETE FROM NorvaScheduler.dbo.tblSchedule", false, "was deleted", QStringList());
        row("deleted, saved anew", "DELETE FROM NorvaScheduler.dbo.tblSchedule", true, "was deleted", mine);
        row("running", status + "2", false, "has started to run",
            QStringList("March|Brightwater|2|Amelia.Hart"));
        row("run", status + "4", false, "has run", QStringList("March|Brightwater|4|Amelia.Hart"));
        row("disabled", status + "1", false, "", QStringList("Mine|Brightwater|1|QuorraAdmin"));
    }

    void othersAreNotOverwrittenInSilence() {
        const auto [meanwhile, yes, told, rows] = thisRow<QString, bool, QString, QStringList>();
        Editor editor;
        editor.show(editor.add("March", Pending, tomorrow));
        editor.type("Mine");
        editor.db().execute(Sql::script(meanwhile));
        if (told.contains("deleted") || told.contains("overwrite") || told.contains("changed"))
            editor.program.messages.answer(yes);
        editor.press("cmdSave");
        const QString shown = editor.shown().join('\n');
        QVERIFY2(shown.contains(QRegularExpression(told)) && shown.isEmpty() == told.isEmpty(),
                 qPrintable(shown));
        QCOMPARE(editor.rows(), rows);
        const bool saved = yes || told.isEmpty();
        QCOMPARE(editor.closedWithCallback(), saved);
        QVERIFY(editor.program.messages.finished());
        if (!saved) QCOMPARE(editor.title().text(), QString("Mine"));
    }

    void projectsThatCannotBeUsedAreNamed_data() {
        const Rows<QString, QString> row;
        row("gone", "No-such", "The project 'No-such' no longer exists on this server.");
        row("no bills table", "No Table", "The database 'No Table' is no project: it has no table of bills.");
        row("no bills", "Empty's", "The project 'Empty's' holds no bills yet.");
        row("no rights", "Quillon Trust", "The project 'Quillon Trust' cannot be opened: ");
        row("no cost centres", "Vantry Estates",
            "No master Cost Centre entries can be found for this project.");
    }

    void projectsThatCannotBeUsedAreNamed() {
        const auto [project, message] = thisRow<QString, QString>();
        Editor editor;
        editor.makeProject("No Table", false, false);
        editor.makeProject("Empty's", true, false);
        editor.chooseRecent(project);
        const QStringList shown = editor.shown();
        QVERIFY2(shown.size() == 1 && shown[0].startsWith(message), qPrintable(shown.join('\n')));
        QCOMPARE(editor.control<QLineEdit>("txtProject").text(), QString("Please select a project"));
        // A stored schedule of such a project can still be edited and given another one.
        const int id = editor.add("March", Pending, tomorrow, project);
        editor.show(id);
        QVERIFY(editor.shown().value(0).startsWith(message));
        QCOMPARE(editor.control<QLineEdit>("txtProject").text(), project);
        QVERIFY(editor.templates().currentIndex() >= 0); // of the template's own account
        editor.type("April");
        editor.date().setDate(QDate(2031, 2, 3));
        editor.press("cmdSave");
        QVERIFY(editor.shown().isEmpty() && editor.closedWithCallback());
        QCOMPARE(editor.rows(), QStringList("April|" + project + "|0|QuorraAdmin"));
        editor.caller.calls = 0;
        editor.show(id);
        QCOMPARE(editor.date().date(), QDate(2031, 2, 3));
        editor.press("cmdAddTemplate"); // its account is not known
        editor.press("cmdSaveAs");
        QCOMPARE(editor.shown().filter("Please choose another project.").size(), 2);
        editor.chooseRecent("Brightwater");
        editor.press("cmdSave");
        QVERIFY(editor.shown().isEmpty() && editor.closedWithCallback());
        QCOMPARE(editor.rows(), QStringList("April|Brightwater|0|QuorraAdmin"));
    }

    void aStoredLongTitleMayStay() {
        Editor editor;
        editor.show(editor.add(QString(60, 'a'), Pending, tomorrow));
        auto& time = editor.control<QTimeEdit>("dtRunOnTime");
        time.setTime(time.time().addSecs(3600));
        editor.press("cmdSave");
        QVERIFY(editor.shown().isEmpty() && editor.closedWithCallback());
    }

    void oddProjectNamesWork() {
        for (const QString project : {"O'Dowd Freight", "Harcourt-Lisle", "x]y [z"}) {
            Editor editor;
            if (project.contains(']')) editor.makeProject(project, true, true);
            editor.chooseRecent(project);
            QVERIFY2(editor.templates().count() > 0, qPrintable(editor.shown().join('\n')));
            editor.templates().setCurrentIndex(0);
            editor.type("March");
            const bool asks = !project.contains(']'); // that one holds no calls
            if (asks) editor.program.messages.answer(true);
            editor.press("cmdSave");
            QCOMPARE(editor.shown().size(), asks ? 1 : 0);
            QCOMPARE(editor.rows(), QStringList("March|" + project + "|0|QuorraAdmin"));
        }
    }

    void aProjectThatVanishesBeforeTheSaveLosesNothing() {
        Editor editor;
        editor.makeProject("Short-lived", true, true);
        editor.chooseRecent("Short-lived");
        editor.templates().setCurrentIndex(0);
        editor.type("March");
        editor.program.system().execute(sql("DROP DATABASE [Short-lived]"));
        editor.press("cmdSave");
        QCOMPARE(editor.shown(), QStringList("The project 'Short-lived' no longer exists on this server. "
                                             "Please choose another project."));
        QVERIFY(editor.rows().isEmpty() && editor.screen->isVisible());
        QCOMPARE(editor.title().text(), QString("March"));
    }

    void anotherAccountOffersItsOwnTemplates() {
        Editor editor;
        editor.show(editor.add("March", Pending, tomorrow));
        const QString former = editor.templates().currentText();
        editor.chooseRecent("Harcourt-Lisle");
        QCOMPARE(editor.templates().currentIndex(), -1);
        editor.press("cmdSave");
        QCOMPARE(editor.shown(), QStringList("Please select a template"));
        editor.chooseRecent("Brightwater");
        QCOMPARE(editor.templates().currentText(), former);
    }

    void anOldProjectIsUpdatedOnceWhenTheUserLikes() {
        Editor editor;
        const Sql due =
            sql("SELECT COUNT(*) FROM Marchetti2007.dbo.TblCallRecords WHERE TimebandCopy IS NULL");
        for (const bool yes : {false, true}) {
            editor.screen.reset();
            editor.chooseRecent("Marchetti2007");
            editor.templates().setCurrentIndex(0);
            editor.type(yes ? "Second" : "First");
            editor.program.messages.answer(yes);
            editor.press("cmdSave");
            const QStringList shown = editor.shown();
            QVERIFY2(shown.size() == 1 && shown[0].startsWith("An important one-off update"),
                     qPrintable(shown.join('\n')));
            QVERIFY(!editor.screen->isVisible());
            QCOMPARE(editor.db().scalar(due) == "0", yes);
        }
        QCOMPARE(editor.rows().size(), 2);
    }

    void aTemplateMadeFromHereIsTaken() {
        Editor editor;
        editor.chooseRecent("Brightwater");
        inNextModal<frmTemplate>([](frmTemplate& screen) {
            screen.findChild<QLineEdit*>("txtTemplate")->setText("Made for it");
            screen.findChild<QAbstractButton*>("cmdSave")->click();
        });
        editor.press("cmdAddTemplate");
        const auto& templates = *editor.screen->findChild<QComboBox*>("cmbTemplate");
        QCOMPARE(templates.currentText(), "Made for it");
        inNextModal<frmTemplate>([](frmTemplate& screen) { screen.close(); });
        editor.press("cmdAddTemplate");
        QCOMPARE(templates.currentText(), "Made for it");
    }

    /// The editor of ordinary templates would drop the reports that are added to a sub-project one.
    void reportsOfSubProjectsAreNotEdited() {
        Editor editor;
        editor.chooseRecent("Brightwater");
        editor.templates().setCurrentText("Pack for every department");
        bool shown = false;
        inNextModal<frmTransfer>([&](frmTransfer& screen) {
            shown = true;
            screen.close();
        });
        editor.press("cmdReports");
        QVERIFY(shown);
    }

    void levelFourMaySetUpNoSubProjects() {
        Editor editor("Siobhan.Kelly");
        editor.show(clsSchedule::notStored);
        QVERIFY(!editor.screen->findChild<QAbstractButton*>("cmdCCSub")->isVisible());
        editor.press("cmdCCSub");
        QCOMPARE(editor.shown(),
                 QStringList("'Cost Centre Sub Project' schedules are not allowed for level 4 users."));
        editor.press("cmdAddTemplate");
        QCOMPARE(editor.shown(), QStringList("Please select a project"));
    }

    void aSaveThatFailsAnywhereLeavesOldOrNew_data() {
        const Rows<bool, bool, bool> row;
        row("update", false, false, false);
        row("update, reply lost", false, true, true);
        row("insert", true, false, false);
        row("insert, reply lost", true, true, true);
        row("insert, connection lost", true, false, true);
    }

    void aSaveThatFailsAnywhereLeavesOldOrNew() {
        const auto [insert, after, lost] = thisRow<bool, bool, bool>();
        Editor editor;
        editor.chooseRecent("Brightwater"); // which needs no update
        int failures = 0;
        for (int step = 1;; ++step) {
            QVERIFY(step < 50);
            editor.db().execute(sql("DELETE FROM NorvaScheduler.dbo.tblSchedule"));
            editor.caller.calls = 0;
            editor.show(insert ? clsSchedule::notStored : editor.add("Old", Disabled, tomorrow));
            if (insert)
                editor.fill("New");
            else
                editor.type("New");
            const QStringList before = editor.rows();
            editor.shown();
            Fault& fault = editor.program.fault;
            fault.after = after;
            fault.lost = lost;
            fault.arm(step);
            editor.press("cmdSave");
            const bool reached = fault.taken >= step;
            fault.arm(0);
            const QStringList now = editor.rows();
            const QStringList saved(QString("New|Brightwater|%1|QuorraAdmin").arg(insert ? 0 : 1));
            QVERIFY2(now == before || now == saved, qPrintable(now.join('\n')));
            if (!reached) break;
            const QStringList told = editor.shown();
            if (editor.screen->isVisible()) {
                ++failures;
                QVERIFY2(now == before || after, "a failed save was stored");
                QCOMPARE(told.size(), 1);
                QCOMPARE(editor.title().text(), QString("New"));
                QVERIFY(editor.templates().currentIndex() >= 0);
                editor.press("cmdSave"); // nothing hinders the next attempt
            }
            QCOMPARE(editor.rows(), saved);
            QVERIFY2(editor.closedWithCallback(), qPrintable(editor.shown().join('\n')));
        }
        QVERIFY(failures >= 3);
    }
};

static const AnnounceTest<FrmScheduleTest> announce;
#include "FrmScheduleTest.moc"
