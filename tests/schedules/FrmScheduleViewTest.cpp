#include "schedules/frmScheduleView.h"

#include "Screens.h"
#include "db/DbError.h"
#include "support/Files.h"
#include "support/Rows.h"
#include "support/TestClass.h"
#include "ui/uctListView.h"

#include <QCheckBox>
#include <QLabel>
#include <QPlainTextEdit>

namespace {

using enum ScheduleStatus;

struct View : ScheduleScreen<frmScheduleView> {
    using ScheduleScreen::ScheduleScreen;

    int reportId() {
        return db()
            .scalar(
                sql("SELECT MIN(ReportID) FROM NorvaScheduler.dbo.tblTemplate_Report WHERE TemplateID = {}",
                    templateOf("BW10023")))
            .toInt();
    }
    uctListView& list() { return control<uctListView>("lstLog"); }
    QString text(const QString& label) { return control<QLabel>(label).text(); }
    QStringList entries() {
        QStringList entries = texts(list());
        for (int i = 0; i < entries.size(); ++i) entries[i] += '|' + texts(list(), 1).at(i);
        return entries;
    }
    /// A run with one good report, one that failed, one deleted since, and a reset.
    int addRun() {
        const int id = add("Run", CompletedWithErrors, WallClock(QDate(2026, 3, 2), QTime(9, 0)));
        addLog(id, reportId(), 0);
        addLog(id, reportId(), 17, "No calls,\r\n\"none\" at all", "  Dear calls ");
        addLog(id, 999'999, 0);
        addLog(id, -1, -1, "=1+1 by user");
        return id;
    }
};

} // namespace

/// The log view of a schedule that was run.
class FrmScheduleViewTest : public QObject {
    Q_OBJECT

private slots:
    void showsWhatFailedAndWhy() {
        View view;
        QCOMPARE(view.show(view.addRun()), 0);
        QCOMPARE(view.text("lblScheduleTitle"), QString("Run"));
        QCOMPARE(view.text("lblProject"), QString("Brightwater"));
        QCOMPARE(view.text("lblDate"), QString("02 Mar 2026 09:01 (Delayed 1 Min)"));
        QCOMPARE(view.text("lblStatus"), QString("Errors occurred"));
        QCOMPARE(view.text("lblSummary"),
                 QString("1 of 3 reports failed; the schedule itself reported an error"));
        const QStringList entries = view.entries();
        QCOMPARE(entries.size(), 4);
        QVERIFY2(entries[0].contains(" - ") && entries[0].endsWith("|ErrorCode #0:"), qPrintable(entries[0]));
        QCOMPARE(entries[1], QString("Dear calls|ErrorCode #17:No calls,  \"none\" at all"));
        QCOMPARE(entries[2], QString("(deleted Report)|ErrorCode #0:"));
        QCOMPARE(entries[3], QString("Schedule|ErrorCode #-1:=1+1 by user"));
        // The first failure is selected and can be read in full.
        QVERIFY(view.control<QPlainTextEdit>("txtDetails")
                    .toPlainText()
                    .startsWith("Dear calls\nErrorCode #17:"));
        view.control<QCheckBox>("chkErrorsOnly").setChecked(true);
        QCOMPARE(view.entries(), QStringList({entries[1], entries[3]}));
    }

    void theLogCanBeSaved() {
        View view;
        view.show(view.addRun());
        const QString path = view.program.appFile("log.csv");
        view.program.messages.pick(view.program.appFile("log")); // without its ending
        view.press("cmdSaveLog");
        for (const bool replace : {false, true}) {
            view.program.messages.pick(path);
            view.program.messages.answer(replace);
            view.press("cmdSaveLog");
        }
        const QString csv = QString::fromUtf8(readFile(path));
        QVERIFY2(csv.startsWith("\uFEFF\"Schedule\",\"") && csv.contains("\r\n\"Status\",\"")
                     && csv.contains("\"Dear calls\",\"17\",\"No calls,\r\n\"\"none\"\" at all\"\r\n")
                     && csv.endsWith("\"Schedule\",\"-1\",\"'=1+1 by user\"\r\n"),
                 qPrintable(csv));
        view.shown();
        view.program.messages.pick("/nowhere/at/all.csv");
        view.press("cmdSaveLog");
        QCOMPARE(view.shown(), QStringList("The file '/nowhere/at/all.csv' could not be written."));
    }

    void aCopyIsCutAndWarnsWhenItRunsAtOnce_data() {
        const Rows<int, bool> row;
        row("past", -60, true);
        row("within the hour", 58, true);
        row("two hours ahead", 120, false);
    }

    void aCopyIsCutAndWarnsWhenItRunsAtOnce() {
        const auto [minutes, warns] = thisRow<int, bool>();
        View view;
        view.show(view.add("Run", Completed, WallClock::now().addSecs(minutes * 60)));
        view.program.messages.type("  " + QString(60, 'c'));
        view.press("cmdSaveAs");
        const QStringList shown = view.shown();
        QCOMPARE(shown[0],
                 QString("Please enter a new schedule title (note: this will create a new active schedule)"));
        QCOMPARE(shown.size(), warns ? 2 : 1);
        if (warns)
            QCOMPARE(shown[1], QString("The new schedule will run immediately when scheduler is started.\n"
                                       "If this is not intended please amend the schedule's run date."));
        QVERIFY(view.closedWithCallback());
        QCOMPARE(view.rows(), QStringList({"Run|Brightwater|4|Amelia.Hart",
                                           QString(50, 'c') + "|Brightwater|0|QuorraAdmin"}));
    }

    void aCopyThatIsRefusedKeepsTheView() {
        View view;
        const int id = view.add("Run", Completed, WallClock::now());
        view.show(id);
        for (const auto& typed :
             {std::optional<QString>(), std::optional<QString>("  "), std::optional<QString>("RUN")}) {
            view.program.messages.type(typed);
            view.press("cmdSaveAs");
        }
        QCOMPARE(view.shown().filter("Title already exists, please rename the schedule").size(), 1);
        view.db().execute(sql("DELETE FROM NorvaScheduler.dbo.tblSchedule"));
        view.program.messages.type("Copy");
        view.press("cmdSaveAs");
        QCOMPARE(view.shown().last(), QString("Error saving schedule"));
        QVERIFY(view.rows().isEmpty() && view.screen->isVisible());
        QCOMPARE(view.show(id), int(clsSchedule::NotFound));
    }

    void deletesScheduleAndLogTogether() {
        View view;
        const int id = view.addRun();
        for (int step = 1; !view.rows().isEmpty(); ++step) {
            view.caller.calls = 0;
            view.show(id);
            view.program.messages.answer(true);
            view.program.fault.arm(step);
            view.press("cmdDelete");
            view.program.fault.arm(0);
            const int rows = int(view.rows().size());
            QCOMPARE(view.logs(), rows * 4);
            QCOMPARE(view.screen->isVisible(), rows == 1);
            QVERIFY(step < 10);
        }
        QVERIFY(view.closedWithCallback());
        QVERIFY(view.shown().size() > 3);
    }

    void aLongLogTakesNoMoreStatementsAndKeepsItsOrder() {
        View view;
        const int id = view.addRun();
        const auto statements = [&] {
            const qint64 before = view.program.session.db().statementCount();
            view.show(id);
            return view.program.session.db().statementCount() - before;
        };
        const qint64 few = statements();
        Transaction transaction(view.db());
        for (int i = 0; i < 1000; ++i) view.addLog(id, view.reportId(), i % 2, "x");
        transaction.commit();
        QCOMPARE(statements(), few);
        const QStringList entries = view.entries();
        QCOMPARE(entries.size(), 1004);
        for (const bool errorsOnly : {true, false})
            view.control<QCheckBox>("chkErrorsOnly").setChecked(errorsOnly);
        QVERIFY(view.entries() == entries);
    }
};

static const AnnounceTest<FrmScheduleViewTest> announce;
#include "FrmScheduleViewTest.moc"
