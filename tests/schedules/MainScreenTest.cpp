#include "Screens.h"
#include "schedules/frmMainScreen.h"
#include "schedules/frmSchedule.h"
#include "schedules/modScheduler.h"
#include "support/Modal.h"
#include "support/Rows.h"
#include "support/TestClass.h"
#include "ui/uctListView.h"

#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QTextBrowser>
#include <QToolButton>

/// The main screen over schedules in every state.
using enum ScheduleStatus;

class MainScreenTest : public QObject {
    Q_OBJECT

    struct Hub : Schedules {
        std::unique_ptr<frmMainScreen> screen;

        using Schedules::Schedules;
        int addIn(const QString& title, ScheduleStatus status, qint64 seconds) {
            return add(title, status, WallClock::now().addSecs(seconds).stored(), WallClock().stored());
        }
        frmMainScreen& show() {
            screen = std::make_unique<frmMainScreen>(program.context);
            screen->show();
            return *screen;
        }
        uctListView& pending() { return child<uctListView>(*screen, "lstSchedules"); }
        uctListView& finished() { return child<uctListView>(*screen, "lstFinished"); }
        void press(const QString& button) { ::press(*screen, button); }
        QStringList headers(uctListView& list) {
            QStringList captions;
            for (int i = 0; i < list.model()->columnCount(); ++i)
                captions << list.model()->headerData(i, Qt::Horizontal, Qt::DisplayRole).toString();
            return captions;
        }
    };

private slots:
    void dueTexts_data() {
        const Rows<QString, QString, QString> row;
        const QString now = "2026-Nov-21 12:00:00";
        row("to come", "2026-Nov-21 12:00:01", now, "Pending");
        row("1 second", "2026-Nov-21 11:59:59", now, "Pending (Delayed  <1 Min)");
        row("61 seconds", "2026-Nov-21 11:58:59", now, "Pending (Delayed 1 Min)");
        row("2 days", "2026-Nov-19 11:55:00", now, "Pending (Delayed 2 Days, 0 Hours, 5 Mins)");
        row("a year and a day", "2025-Nov-20 12:00:00", now, "Pending (Delayed 1 Year, 1 Day)");
        row("beyond 32 bits", "1926-Nov-21 12:00:00", now, "Pending (Delayed 100 Years)");
        row("in an hour that clocks skip", "2026-Mar-29 01:30:00", "2026-Mar-29 03:00:00",
            "Pending (Delayed 1 Hour, 30 Mins)");
        row("no date", "soon", now, "Pending");
    }

    void dueTexts() {
        const auto [runDate, now, text] = thisRow<QString, QString, QString>();
        QCOMPARE(dueText(WallClock::fromStored(runDate), *WallClock::fromStored(now)), text);
    }

    void everyStatusStandsInItsList() {
        Hub hub;
        hub.addIn("later", Pending, 3600);
        hub.addIn("overdue", Pending, -7200);
        hub.addIn("off", Disabled, -7200);
        hub.addIn("running", Processing, -60);
        hub.addIn("never heard of", ScheduleStatus(7), 3600);
        hub.add("empty date", Pending, "");
        hub.add("no date", Pending, "next week");
        hub.add("done", Completed, "2026-Jan-01 08:00:00", "2026-Jan-02 09:05:00");
        hub.add("failed", CompletedWithErrors, "2026-Jan-01 08:00:00", "2026-Jan-03 10:00:59");
        hub.add("reset, never ran", CompletedWithErrors, "2026-Jan-01 08:00:00", WallClock().stored());
        hub.add("orphan", Pending, "2030-Jan-01 08:00:00", "", "QuorraAdmin", 9999);
        hub.show();
        QHash<QString, QStringList> rows;
        for (uctListView* list : {&hub.pending(), &hub.finished()})
            for (const ListRow& row : list->rows().rows())
                for (int column = 1; column < row.cells.size(); ++column)
                    rows[row.text(0)] << row.text(column);
        QCOMPARE(rows.size(), 11);
        QCOMPARE(rows["later"][0], QString("Pending"));
        QCOMPARE(rows["overdue"][0], QString("Pending (Delayed 2 Hours, 0 Mins)"));
        QCOMPARE(rows["off"][0], QString("Disabled"));
        QCOMPARE(rows["running"][0], QString("Processing"));
        QCOMPARE(rows["never heard of"][0], QString("Pending"));
        QCOMPARE(rows["empty date"][1], QString("not specified"));
        QVERIFY(rows["no date"][1].contains("next week"));
        QCOMPARE(rows["done"].first(3),
                 QStringList({"Completed", "02 Jan 2026 09:05", "1 Day, 1 Hour, 5 Mins"}));
        QCOMPARE(rows["failed"].first(2), QStringList({"Completed with Errors", "03 Jan 2026 10:00"}));
        QCOMPARE(rows["reset, never ran"][1], QString("not specified"));
        QVERIFY(rows["later"][2].startsWith("Reports : "));
        QCOMPARE(hub.pending().rows().rows().size(), 8U);
        for (const ListRow& row : hub.pending().rows().rows())
            if (row.text(0) == "orphan")
                QCOMPARE(row.toolTip, QString("The template of this schedule no longer exists."));
    }

    void oddTitlesAreShownAndDeletedAsTheyAre() {
        Hub hub;
        for (const QString title : {"O'Brien's bills", "the \"big\" one", "[x]%_ ]]", "Κλήσεις & <b>Ω</b>"}) {
            const int id = hub.add(QString(title).replace("\"", "''"), Pending, "2030-Jan-01 08:00:00");
            hub.addLog(id, -1, 0);
            hub.show();
            QVERIFY(hub.pending().selectId(id));
            hub.program.messages.answer(false);
            hub.press("cmdDelete");
            QCOMPARE(hub.shown(),
                     QStringList(QString("Are you sure you want to delete the schedule '%1' ?").arg(title)));
            QCOMPARE(texts(hub.pending()), QStringList(title));
            hub.program.messages.answer(true);
            QTest::keyClick(&hub.pending(), Qt::Key_Delete);
            QVERIFY(texts(hub.pending()).isEmpty() && hub.logs() == 0);
            hub.shown();
        }
    }

    void usersSeeTheirOwn() {
        Hub hub("Amelia.Hart");
        hub.add("mine", Pending, "2030-Jan-01 08:00:00", "", "Amelia.Hart");
        hub.add("yours", Pending, "2030-Jan-01 08:00:00", "", "QuorraAdmin");
        hub.show();
        QCOMPARE(texts(hub.pending()), QStringList("mine"));
    }

    void columnsSortByWhatTheyMean() {
        Hub hub;
        hub.add("b", Pending, "2030-Feb-01 08:00:00");
        hub.add("A", Pending, "2030-Nov-01 08:00:00");
        hub.add("c", Pending, "2029-Dec-31 08:00:00");
        hub.add("d", Pending, "");
        hub.show();
        QCOMPARE(texts(hub.pending()), QStringList({"d", "c", "b", "A"})); // by date at first
        QCOMPARE(hub.headers(hub.pending())[2], QString("Due To Run ^"));
        ListViewColumnSort(hub.pending(), 2, false);
        QCOMPARE(texts(hub.pending()), QStringList({"A", "b", "c", "d"}));
        QCOMPARE(hub.headers(hub.pending())[2], QString("Due To Run v"));
        hub.screen->FillScheduleList();
        QCOMPARE(texts(hub.pending()), QStringList({"A", "b", "c", "d"}));
        ListViewColumnSort(hub.pending(), 0, false);
        QCOMPARE(texts(hub.pending()), QStringList({"A", "b", "c", "d"}));
        QCOMPARE(hub.headers(hub.pending())[0], QString("Schedule Title ^"));
        QCOMPARE(hub.headers(hub.pending())[2], QString("Due To Run"));
    }

    void selectionSurvivesAndFollows() {
        Hub hub;
        const int first = hub.addIn("first", Pending, 3600);
        const int second = hub.addIn("second", Pending, 7200);
        hub.show();
        QVERIFY(hub.pending().selectId(second));
        hub.addIn("third", Pending, 60);
        SetScheduleStatus(hub.program.session, first, Completed);
        hub.screen->FillScheduleList();
        QCOMPARE(hub.pending().selectedId(), second);
        SetScheduleStatus(hub.program.session, second, Completed);
        hub.screen->FillScheduleList();
        QVERIFY(!hub.pending().selectedId());
        QCOMPARE(hub.finished().selectedId(), second);
        QVERIFY(hub.finished().selectId(first));
        QVERIFY(hub.pending().selectId(hub.pending().rows().rows()[0].id)); // one list at a time
        QVERIFY(!hub.finished().selectedId());
    }

    void theFilterSurvivesARefresh() {
        Hub hub;
        const int hidden = hub.addIn("Monthly", Pending, 3600);
        const int shown = hub.addIn("Weekly [50%] review", Pending, 3600);
        hub.show();
        QVERIFY(hub.pending().selectId(hidden));
        auto* filter = hub.screen->findChild<QLineEdit*>("txtFilterSchedules");
        filter->setText("review WEEKLY [50%]");
        QCOMPARE(texts(hub.pending()), QStringList("Weekly [50%] review"));
        QVERIFY(!hub.pending().selectedId()); // no neighbour takes the place of what is hidden
        QVERIFY(!hub.screen->findChild<QToolButton*>("cmdEdit")->isEnabled());
        hub.addIn("Weekly too", Pending, 60);
        hub.screen->FillScheduleList();
        QCOMPARE(texts(hub.pending()), QStringList("Weekly [50%] review"));
        filter->setText("BRIGHTWATER pending"); // the project, which no column shows
        QCOMPARE(hub.pending().model()->rowCount(), 3);
        QVERIFY(hub.pending().selectId(shown));
    }

    void severalAreDeletedAtOnce() {
        Hub hub;
        for (const QString title : {"a", "b", "c"}) hub.addIn(title, Pending, 3600);
        hub.show();
        hub.pending().selectAll();
        QVERIFY(!child<QToolButton>(*hub.screen, "cmdEdit").isEnabled());
        hub.program.messages.answer(true);
        hub.program.fault.arm(3); // in the middle of the first one
        QTest::keyClick(&hub.pending(), Qt::Key_Delete);
        hub.program.fault.arm(0);
        const QStringList shown = hub.shown();
        QCOMPARE(shown.first(), QString("Are you sure you want to delete the 3 selected schedules ?"));
        QVERIFY2(shown.mid(1).join('|').startsWith("1 of the 3 schedules could not be deleted."),
                 qPrintable(shown.join('|')));
        QCOMPARE(hub.rows().size(), 1);
        QCOMPARE(hub.pending().model()->rowCount(), 1);
    }

    void aScheduleIsRunOnceMore() {
        Hub hub;
        const QString longest(50, 'x');
        hub.add("Monthly", Completed, "2026-Jan-01 08:00:00", "2026-Jan-02 09:05:00");
        hub.add("monthly (2)", Disabled, "2030-Jan-01 08:00:00");
        const int full = hub.add(longest, Pending, "2030-Jan-01 08:00:00");
        hub.show();
        hub.finished().selectId(hub.finished().rows().rows()[0].id);
        child<QLineEdit>(*hub.screen, "txtFilterSchedules").setText("no such words");
        hub.press("cmdRunNow");
        QVERIFY(hub.shown().isEmpty());
        QCOMPARE(hub.rows().last(), QString("Monthly (3)|Brightwater|0|QuorraAdmin"));
        const int made = hub.pending().selectedId().value_or(0); // in view, whatever the filter said
        QCOMPARE(hub.pending().textOf(made, 0), QString("Monthly (3)"));
        const auto due = WallClock::fromStored(hub.db().scalar(
            sql("SELECT RunDate FROM NorvaScheduler.dbo.tblSchedule WHERE ScheduleID = {}", made)));
        QVERIFY(due && qAbs(due->secsTo(WallClock::now())) < 60);

        hub.pending().selectId(full);
        inNextModal<frmSchedule>([&](frmSchedule& editor) {
            QCOMPARE(child<QLineEdit>(editor, "txtTitle").text(), QString(46, 'x') + " (2)");
            press(editor, "cmdExit"); // nothing was changed, so nothing is asked
        });
        hub.press("cmdRunAgain");
        QCOMPARE(hub.rows().size(), 4);
        // What stands against it is told in the editor, which stays open.
        hub.db().execute(sql("UPDATE NorvaScheduler.dbo.tblSchedule SET ProjectRef = 'NoSuchProject'"));
        inNextModal<frmSchedule>([&](frmSchedule& editor) { press(editor, "cmdExit"); });
        hub.press("cmdRunNow");
        QVERIFY(hub.shown().join('|').contains("NoSuchProject"));
        QCOMPARE(hub.rows().size(), 4);
    }

    void aResultIsNewsUntilItIsLookedAt() {
        Hub hub;
        const int mine = hub.add("mine", Processing, "2026-Jan-01 08:00:00", "", "QuorraAdmin");
        const int theirs = hub.add("theirs", Processing, "2026-Jan-01 08:00:00", "", "Amelia.Hart");
        hub.show();
        const auto isBold = [&](int id) {
            return hub.finished().rows().rows()[std::size_t(hub.finished().rows().rowOf(id))].emphasized;
        };
        ListViewUnselect(hub.pending());
        for (const int id : {mine, theirs}) SetScheduleStatus(hub.program.session, id, Completed);
        hub.screen->FillScheduleList();
        QVERIFY(isBold(mine) && !isBold(theirs));
        hub.finished().selectId(mine);
        QVERIFY(!isBold(mine));
        hub.screen->FillScheduleList();
        QVERIFY(!isBold(mine));
    }

    void countsTellWhatIsThere() {
        Hub hub;
        hub.addIn("later", Pending, 3600);
        hub.addIn("overdue", Pending, -7200);
        hub.addIn("running", Processing, -60);
        hub.addIn("off", Disabled, 60);
        hub.addIn("done", Completed, -60);
        hub.show();
        const auto& counts = child<QLabel>(*hub.screen, "lblCounts");
        QCOMPARE(counts.text(), QString("2 pending, 1 running, 1 delayed, 1 disabled, 1 completed"));
        child<QLineEdit>(*hub.screen, "txtFilterSchedules").setText("overdue");
        QVERIFY2(counts.text().endsWith("; 2 of 5 shown"), qPrintable(counts.text()));
    }

    void helpOpensAtTheScreensOwnPage() {
        Hub hub;
        hub.show();
        inNextModal<frmSchedule>([&](frmSchedule& editor) {
            if (!QTest::qWaitForWindowActive(&editor))
                qFatal("the editor is not active"); // no key reaches it
            QTest::keyClick(&editor, Qt::Key_F1);
            auto* help = &child<QDialog>(editor, "frmHelp");
            auto& manual = child<QTextBrowser>(*help, "txtManual");
            QCOMPARE(manual.source().fileName(), QString("schedule-editor.md"));
            QVERIFY(!help->isModal());
            auto& find = child<QLineEdit>(*help, "txtFind");
            find.setText("quotation");
            QTest::keyClick(&find, Qt::Key_Return);
            QVERIFY2(manual.source().fileName() == "email.md", qPrintable(manual.source().toString()));
            QCOMPARE(manual.textCursor().selectedText().toLower(), QString("quotation"));
            find.setText("no such words");
            QTest::keyClick(&find, Qt::Key_Return);
            QCOMPARE(child<QLabel>(*help, "lblAnswer").text(), QString("Not found"));
            press(editor, "cmdExit");
        });
        hub.press("cmdAdd");
    }

    void aScheduleThatTheEngineFinishedIsNotReset() {
        Hub hub;
        const int id = hub.addIn("finishing", Processing, -600);
        hub.show();
        SetScheduleStatus(hub.program.session, id, Completed);
        QVERIFY(!ResetSchedule(hub.program.session, id));
        QCOMPARE(ReadScheduleStatus(hub.program.session, id), Completed);
        QCOMPARE(hub.logs(), 0);
    }

    void aStuckScheduleIsReset() {
        Hub hub;
        const int id = hub.addIn("stuck", Processing, -600);
        hub.show();
        QCOMPARE(hub.pending().selectedId(), id); // the program starts there
        QCOMPARE(hub.screen->focusWidget(), &hub.pending());
        hub.program.messages.answer(false);
        QTest::keyClick(&hub.pending(), Qt::Key_Return);
        const QString question = hub.shown().join('|');
        QVERIFY2(question.contains("'stuck'") && question.contains(hub.pending().textOf(id, 2)),
                 qPrintable(question));
        QCOMPARE(ReadScheduleStatus(hub.program.session, id), Processing);
        // Whatever statement fails, log and status stay together.
        for (int k = 2; k <= 5; ++k) {
            hub.program.fault.arm(k);
            hub.program.messages.answer(true);
            hub.press("cmdEdit");
            QCOMPARE(hub.rows(), QStringList("stuck|Brightwater|2|Amelia.Hart"));
            QCOMPARE(hub.logs(), 0);
        }
        hub.program.fault.arm(0);
        hub.shown();
        hub.program.messages.answer(true);
        QTest::keyClick(&hub.pending(), Qt::Key_Return);
        QCOMPARE(hub.shown().mid(1), QStringList("Reseting this schedule status, due to an unknown error"));
        QCOMPARE(hub.finished().textOf(id, 1), QString("Completed with Errors"));
        QCOMPARE(hub.logs(), 1);
        const RecordSet log = hub.db().query(sql("SELECT * FROM NorvaScheduler.dbo.tblLogs"));
        QCOMPARE(log.row(0).integer("ErrorCode"), -1);
        QCOMPARE(log.row(0).integer("ReportID"), -1);
        QCOMPARE(log.row(0).text("ErrorDescription"), QString("Status reset by user"));
    }

    void aScheduleThatIsGoneIsToldOf() {
        Hub hub;
        const int id = hub.addIn("going", Pending, 3600);
        hub.show();
        QVERIFY(hub.pending().selectId(id));
        hub.db().execute(sql("DELETE FROM NorvaScheduler.dbo.tblSchedule"));
        hub.press("cmdEdit");
        QCOMPARE(hub.shown(),
                 QStringList("This schedule has been deleted by somebody else in the meantime."));
    }

    void theServerMayVanishAndComeBack() {
#ifdef Q_OS_WIN
        QSKIP("Windows keeps a file that is open where it is.");
#endif
        if (!TestProgram::onEmbeddedServer()) QSKIP("a real server's files are not moved");
        Hub hub;
        hub.addIn("kept", Pending, 3600);
        hub.show();
        auto* state = hub.screen->findChild<QLabel*>("lblServerState");
        const QString away = hub.program.serverFile() + ".away";
        QVERIFY(QFile::rename(hub.program.serverFile(), away));
        hub.screen->FillScheduleList();
        QVERIFY2(state->text().startsWith("The server cannot be reached since "), qPrintable(state->text()));
        QCOMPARE(texts(hub.pending()), QStringList("kept"));
        QVERIFY(hub.shown().isEmpty());
        QVERIFY(QFile::rename(away, hub.program.serverFile()));
        hub.screen->FillScheduleList();
        QVERIFY(state->text().isEmpty());
        QCOMPARE(texts(hub.pending()), QStringList("kept"));
    }

    void theNumberOfStatementsDoesNotGrow() {
        Hub hub;
        hub.show();
        const auto statements = [&] {
            const int before = hub.program.fault.taken;
            hub.screen->FillScheduleList();
            return hub.program.fault.taken - before;
        };
        const int empty = statements();
        for (int i = 0; i < 50; ++i) hub.addIn(QString("schedule %1").arg(i), ScheduleStatus(i % 5), i * 60);
        QCOMPARE(statements(), empty);
        QVERIFY(empty <= 4);
        // Sub-project templates: one more for each table and level.
        const RecordSet templates =
            hub.db().query(sql("SELECT * FROM NorvaScheduler.dbo.tblTemplate WHERE TemplateType <> 0"));
        QVERIFY(templates.rowCount() > 0);
        const int id = templates.row(0).integer("TemplateID");
        for (int i = 0; i < 5; ++i)
            hub.add(QString("sub %1").arg(i), Pending, "2030-Jan-01 08:00:00", "", "QuorraAdmin", id);
        QCOMPARE(statements(), empty + 1);
        for (const ListRow& row : hub.pending().rows().rows())
            if (row.text(0).startsWith("sub")) {
                QVERIFY2(row.text(3).startsWith("Sub Projects : ") && row.text(3) != "Sub Projects : 0",
                         qPrintable(row.text(3)));
            }
    }

    void placementIsRemembered() {
        Hub hub;
        frmMainScreen& screen = hub.show();
        screen.showNormal();
        screen.setGeometry(40, 50, 1000, 600);
        screen.close();
        frmMainScreen again(hub.program.context);
        again.restorePlacement();
        QCOMPARE(again.geometry(), QRect(40, 50, 1000, 600));
        QVERIFY(!again.isMaximized());
    }
};

static const AnnounceTest<MainScreenTest> announced;
#include "MainScreenTest.moc"
