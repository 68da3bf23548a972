#include "Screens.h"
#include "schedules/frmAgenda.h"
#include "schedules/frmAgendaMove.h"
#include "schedules/frmMainScreen.h"
#include "schedules/frmSchedule.h"
#include "schedules/frmScheduleView.h"
#include "schedules/modScheduler.h"
#include "schedules/uctAgenda.h"
#include "support/Files.h"
#include "support/Modal.h"
#include "support/Rows.h"
#include "support/TestClass.h"
#include "ui/uctListView.h"

#include <QDateEdit>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QScrollBar>
#include <QTimeEdit>
#include <QToolButton>
#include <QXmlStreamReader>

using enum ScheduleStatus;

/// The agenda as its user has it: a real mouse, a real keyboard, others at work meanwhile.
class AgendaTest : public QObject {
    Q_OBJECT

    /// Three weeks ahead, so that no day shown is past.
    static WallClock when(int day, const QString& time) {
        const QDate today = QDate::currentDate();
        return {today.addDays(22 - today.dayOfWeek() + day), QTime::fromString(time)};
    }

    struct Agenda : ScheduleScreen<frmAgenda> {
        RunWatch watch;
        QList<int> opened;

        int addRun(const QString& title, ScheduleStatus status, const WallClock& when) {
            return Schedules::add(title, status, when.stored(), when.stored());
        }
        void open(const QString& view = "optWeek", QDate day = AgendaTest::when(0, "00:00:00").date()) {
            screen = std::make_unique<frmAgenda>(program.context);
            QCOMPARE(screen->Setup(watch), 0);
            screen->SetCallback(&caller, "Calledback");
            connect(screen.get(), &frmAgenda::openRequested, [this](int id) { opened << id; });
            screen->resize(1200, 800);
            screen->show();
            screen->activateWindow();
            QVERIFY(QTest::qWaitForWindowActive(screen.get()));
            press(view);
            control<QDateEdit>("dtDay").setDate(day);
        }
        uctAgenda& drawing() { return control<uctAgenda>("agenda"); }
        uctListView& list() { return control<uctListView>("lstRuns"); }
        QString problem() { return control<QLabel>("lblProblem").text(); }
        /// In the drawing: the middle of a run's line, as it would stand alone at a time.
        QPoint pointOf(const WallClock& when) {
            const QRectF place = drawing().layOut().placeAt(when, 0).value_or(QRectF());
            return QPoint(int(place.center().x()), int(place.center().y() + drawing().headerHeight())
                                                       - drawing().verticalScrollBar()->value());
        }
        QPoint pointOf(int id) {
            drawing().selectId(id, true);
            const auto& runs = drawing().runs();
            const auto run = std::ranges::find(runs, id, &AgendaRun::id) - runs.begin();
            const QRectF place = drawing().layOut().itemOf(std::size_t(run))->place;
            return QPoint(int(place.center().x()), int(place.top() + drawing().headerHeight()) + 6
                                                       - drawing().verticalScrollBar()->value());
        }
        /// Held, moved away and not let go.
        void drag(int id, const QPoint& to) {
            QWidget* canvas = drawing().viewport();
            const QPoint from = pointOf(id);
            QTest::mousePress(canvas, Qt::LeftButton, {}, from);
            moveTo(from + QPoint(0, 15));
            moveTo(to);
        }
        void moveTo(const QPoint& to, Qt::MouseButtons held = Qt::LeftButton) {
            QWidget* canvas = drawing().viewport();
            QMouseEvent move(QEvent::MouseMove, to, canvas->mapToGlobal(to), Qt::NoButton, held, {});
            QCoreApplication::sendEvent(canvas, &move);
        }
        void drop(const QPoint& to) { QTest::mouseRelease(drawing().viewport(), Qt::LeftButton, {}, to); }
        WallClock stored(int id) {
            return WallClock::fromStored(
                       db().scalar(sql(
                           "SELECT RunDate FROM NorvaScheduler.dbo.tblSchedule WHERE ScheduleID = {}", id)))
                .value_or(WallClock());
        }
    };

private slots:
    void drags_data() {
        const Rows<QString, ScheduleStatus, WallClock, WallClock, bool, WallClock> row;
        const WallClock from = when(1, "08:07:30");
        row("to another day and hour", "optWeek", Pending, from, when(4, "11:00:00"), true,
            when(4, "11:00:00"));
        row("No leaves it", "optWeek", Pending, from, when(4, "11:00:00"), false, from);
        row("a disabled one", "optWeek", Disabled, from, when(1, "09:45:00"), true, when(1, "09:45:00"));
        row("within a day", "optDay", Pending, when(0, "08:00:00"), when(0, "10:30:00"), true,
            when(0, "10:30:00"));
        row("a month keeps the hour", "optMonth", Pending, from, when(3, "23:00:00"), true,
            when(3, "08:07:30"));
    }

    void drags() {
        const auto [view, status, from, to, yes, expected] =
            thisRow<QString, ScheduleStatus, WallClock, WallClock, bool, WallClock>();
        Agenda agenda;
        const int id = agenda.addRun("<b>O'Brien</b>", status, from);
        agenda.open(view);
        agenda.program.messages.answer(yes);
        agenda.drag(id, agenda.pointOf(to));
        agenda.drop(agenda.pointOf(to));
        const QString shown = agenda.shown().join('|');
        QVERIFY2(shown.startsWith("Do you want to run the schedule '<b>O'Brien</b>' on ")
                     && !shown.contains('|'),
                 qPrintable(shown));
        QVERIFY(shown.contains("instead of " + from.shown()));
        QCOMPARE(agenda.stored(id), expected);
        QCOMPARE(agenda.drawing().runOf(id)->start, expected);
        QVERIFY(expected.shown().endsWith(agenda.list().textOf(id, 0).last(5)));
    }

    void whatIsNotMoved_data() {
        const Rows<ScheduleStatus> row;
        row("running", Processing);
        row("over", Completed);
        row("dropped beside the days", Pending);
        row("dropped on the names of the days", Pending);
        row("Esc with the button held", Pending);
        row("the release got lost", Pending);
        row("the window was left", Pending);
        row("it was deleted", Pending);
        row("the engine took it", Pending);
        row("somebody moved it", Pending);
        row("the filter hides it", Pending);
        row("dropped where it was", Pending);
    }

    /// Nothing is asked, and the row stays as others left it.
    void whatIsNotMoved() {
        const QString what = QTest::currentDataTag();
        const auto [status] = thisRow<ScheduleStatus>();
        Agenda agenda;
        const int id = agenda.addRun("March", status, when(1, "08:00:00"));
        agenda.open();
        const QPoint there = agenda.pointOf(when(3, "10:00:00"));
        QPoint dropped = there;
        agenda.drag(id, there);
        if (what.contains("beside")) dropped = {-30, 100};
        if (what.contains("names")) dropped = {there.x(), 3};
        if (what.contains("Esc")) QTest::keyClick(&agenda.drawing(), Qt::Key_Escape);
        if (what.contains("lost")) agenda.moveTo(there, Qt::NoButton);
        if (what.contains("left")) agenda.list().setFocus();
        if (what.contains("deleted")) DeleteSchedule(agenda.program.session, id);
        if (what.contains("engine")) SetScheduleStatus(agenda.program.session, id, Processing);
        if (what.contains("somebody"))
            agenda.db().execute(
                sql("UPDATE NorvaScheduler.dbo.tblSchedule SET RunDate = {}", when(5, "01:00:00").stored()));
        if (what.contains("filter")) agenda.control<QLineEdit>("txtFilter").setText("April");
        if (what.contains("where it was")) dropped = agenda.pointOf(id);
        const WallClock before = agenda.stored(id);
        agenda.screen->CalledBack(); // a refresh, in the middle of it
        agenda.moveTo(dropped);
        agenda.drop(dropped);
        QCOMPARE(agenda.shown(), QStringList());
        QCOMPARE(agenda.stored(id), before);
        QVERIFY(agenda.screen->isVisible());
        const bool told = what.contains("deleted") || what.contains("engine") || what.contains("somebody");
        QCOMPARE(agenda.problem().contains("while you were moving it"), told);
        if (what.contains("running")) QVERIFY(!child<QToolButton>(*agenda.screen, "cmdMove").isEnabled());
    }

    void whileTheQuestionIsOpen_data() {
        const Rows<QString, QString> row;
        row("deleted", "DELETE FROM NorvaScheduler.dbo.tblSchedule", "somebody else has deleted it");
        row("taken", "UPDATE NorvaScheduler.dbo.tblSchedule SET Status = 2", "the engine is running it");
        row("moved",
            "UPDATE NorvaScheduler.dbo.tblSchedule SET RunDate = '2031-Jan-01 08:00:00', Username = "
            "'Priya.Nair'",
            "Priya.Nair has changed it meanwhile");
    }

    void whileTheQuestionIsOpen() {
        const auto [statement, told] = thisRow<QString, QString>();
        Agenda agenda;
        const int id = agenda.addRun("March", Pending, when(1, "08:00:00"));
        agenda.open();
        QString rows;
        agenda.program.messages.answer(true, [&, statement = statement] {
            agenda.db().execute(Sql::script(statement));
            agenda.screen->CalledBack(); // the timer may read as well
            rows = agenda.rows().join('|') + agenda.stored(id).stored();
        });
        const QPoint there = agenda.pointOf(when(3, "10:00:00"));
        agenda.drag(id, there);
        agenda.drop(there);
        QVERIFY(agenda.shown().last().contains(told));
        QCOMPARE(agenda.rows().join('|') + agenda.stored(id).stored(), rows);
    }

    void atTheEdgeOfTheDrawing() {
        Agenda agenda;
        const int id = agenda.addRun("March", Pending, when(1, "20:00:00"));
        agenda.open();
        QScrollBar& bar = *agenda.drawing().verticalScrollBar();
        QWidget& canvas = *agenda.drawing().viewport();
        agenda.screen->resize(agenda.screen->minimumSizeHint());
        QTRY_VERIFY(bar.maximum() > canvas.height() / 2); // so that the hours do not find room
        const QPoint place = agenda.pointOf(id);
        const QPoint edge(place.x(), canvas.height() - 3);
        bar.setValue(bar.value() + place.y() - edge.y());
        const int before = bar.value();
        QTest::mousePress(&canvas, Qt::LeftButton, {}, edge);
        QTest::qWait(200);
        agenda.drop(edge);
        QCOMPARE(bar.value(), before); // a press alone turns and moves nothing
        QCOMPARE(agenda.drawing().selectedId(), id);
        QCOMPARE(agenda.shown(), QStringList());
        QTest::mousePress(&canvas, Qt::LeftButton, {}, edge);
        agenda.moveTo(edge - QPoint(0, 15));
        agenda.moveTo(edge);
        QTRY_COMPARE(bar.value(), bar.maximum()); // held there it goes on to the last hour
        agenda.program.messages.answer(true);
        agenda.drop(edge);
        QCOMPARE(agenda.stored(id).date(), when(1, "00:00:00").date());
        QVERIFY(agenda.stored(id).time() > QTime(22, 30));
    }

    void byKeys() {
        Agenda agenda;
        const int late = agenda.addRun("late", Pending, when(9, "08:00:00")); // in the week after
        const int first = agenda.addRun("first", Pending, when(1, "08:07:00"));
        const int done = agenda.addRun("done", Completed, when(2, "09:00:00"));
        agenda.open();
        const auto key = [&](Qt::Key pressed, Qt::KeyboardModifiers with = {}) {
            QTest::keyClick(&agenda.drawing(), pressed, with);
        };
        const auto days = [&] { return agenda.control<QLabel>("lblDays").text(); };
        agenda.drawing().setFocus();
        key(Qt::Key_Right);
        QCOMPARE(agenda.list().selectedId(), first);
        key(Qt::Key_Down, Qt::ControlModifier);
        key(Qt::Key_Right, Qt::ControlModifier);
        key(Qt::Key_Escape); // undoes the move, and leaves the screen
        key(Qt::Key_Return); // opens: nothing is being moved
        QCOMPARE(agenda.opened, QList<int>{first});
        for (int i = 0; i < 7; ++i) key(Qt::Key_Right, Qt::ControlModifier);
        key(Qt::Key_Up, Qt::ControlModifier);
        QCOMPARE(days(), daysText(AgendaView::Week, when(8, "00:00:00").date())); // it is followed
        agenda.program.messages.answer(true);
        key(Qt::Key_Return);
        QCOMPARE(agenda.shown().size(), 1);
        QCOMPARE(agenda.stored(first), when(8, "07:45:00"));
        QVERIFY(agenda.drawing().accessibleDescription().startsWith("first, " + when(8, "07:45:00").shown()));
        key(Qt::Key_Left);
        QCOMPARE(agenda.drawing().selectedId(), done); // in the week before
        key(Qt::Key_Down, Qt::ControlModifier);
        key(Qt::Key_Return); // what is over is read, not moved
        QCOMPARE(agenda.opened, (QList<int>{first, done}));
        key(Qt::Key_Right), key(Qt::Key_Right);
        QCOMPARE(agenda.drawing().selectedId(), late);
        key(Qt::Key_PageUp);
        QCOMPARE(days(), daysText(AgendaView::Week, when(0, "00:00:00").date()));
        key(Qt::Key_Home);
        QCOMPARE(agenda.control<QDateEdit>("dtDay").date(), QDate::currentDate());
    }

    void fromTheList() {
        Agenda agenda;
        const int second = agenda.addRun("second", Pending, when(1, "09:00:00"));
        const int first = agenda.addRun("first", Disabled, when(1, "08:00:00"));
        agenda.Schedules::add("<i>soon</i>", Pending, "next week");
        agenda.Schedules::add("reset", CompletedWithErrors, "2026-Jan-01 08:00:00", WallClock().stored());
        agenda.open("optMonth");
        QVERIFY(
            agenda.control<QLabel>("lblNote").text().endsWith("2 schedules without a date are not shown."));
        QCOMPARE(texts(agenda.list(), 1), QStringList({"first", "second"}));
        QVERIFY(agenda.list().selectId(second));
        QCOMPARE(agenda.drawing().selectedId(), second);
        QTest::keyClick(&agenda.list(), Qt::Key_Return);
        QCOMPARE(agenda.opened, QList<int>{second});
        inNextModal<frmAgendaMove>([](frmAgendaMove& screen) {
            QCOMPARE(child<QTimeEdit>(screen, "dtTime").text(), "09:00");
            child<QDateEdit>(screen, "dtDay").setDate(when(2, "00:00:00").date());
            child<QTimeEdit>(screen, "dtTime").setTime({2, 3, 4});
            screen.accept();
        });
        agenda.program.messages.answer(true);
        agenda.press("cmdMove");
        QCOMPARE(agenda.stored(second), when(2, "02:03:04"));
        inNextModal<frmAgendaMove>([](frmAgendaMove& screen) {
            QCOMPARE(child<QTimeEdit>(screen, "dtTime").text(), "02:03:04");
            child<QDateEdit>(screen, "dtDay").setDate(QDate::currentDate().addDays(-1));
            screen.accept();
        });
        agenda.shown();
        agenda.press("cmdMove");
        QCOMPARE(agenda.shown(), QStringList("The scheduled run date must be after todays date"));
        agenda.control<QLineEdit>("txtFilter").setText("DISABLED brightw");
        QCOMPARE(texts(agenda.list(), 1), QStringList("first"));
        QVERIFY(!agenda.drawing().selectedId()); // no neighbour takes the place of what is hidden
        QVERIFY(agenda.control<QLabel>("lblNote").text().contains("1 of 2 pass the filter."));
        QVERIFY(agenda.list().selectId(first));
        agenda.press("cmdExit");
        QVERIFY(agenda.closedWithCallback());
        agenda.screen = std::make_unique<frmAgenda>(agenda.program.context);
        QCOMPARE(agenda.screen->Setup(agenda.watch), 0);
        QVERIFY(agenda.drawing().view() == AgendaView::Month); // as it was left
    }

    void files() {
        Agenda agenda;
        const int id = agenda.addRun(QString("March <r1> & ") + QChar(1), Pending, when(1, "08:00:00"));
        agenda.addRun("April <r1> &", Pending, when(40, "08:00:00"));
        agenda.addRun("May", Pending, when(41, "08:00:00"));
        agenda.open("optDay", when(1, "00:00:00").date());
        agenda.control<QLineEdit>("txtFilter").setText("<R1> &");
        agenda.drawing().selectId(id, true);
        const QString path = agenda.program.appFile("picture");
        const auto save = [&](const QString& button, const QString& file, int filter = 0) {
            agenda.program.messages.pick(file, filter);
            agenda.press(button);
            return agenda.shown();
        };
        save("cmdSavePicture", path);
        const QImage picture(path + ".png");
        QVERIFY(picture.width() >= agenda.drawing().viewport()->width());
        QVERIFY(picture.height() > agenda.drawing().layOut().size().height()); // all hours, not those in view
        agenda.program.messages.answer(false);
        QVERIFY(save("cmdSavePicture", path + ".png").join('|').contains("exists already"));
#ifdef SCHEDULER_SVG
        save("cmdSavePicture", path + " v1.2", 1);
        QVERIFY(readFile(path + " v1.2.svg").startsWith("<?xml"));
        save("cmdSavePicture", path + "2.png", 1); // the name was proposed so
        QVERIFY(readFile(path + "2.svg").startsWith("<?xml"));
        save("cmdSavePicture", path + ".SVG");
        const QString drawing = QString::fromUtf8(readFile(path + ".SVG"));
        QXmlStreamReader xml(drawing);
        while (!xml.atEnd()) xml.readNext();
        QVERIFY2(!xml.hasError(), qPrintable(xml.errorString()));
        QVERIFY(drawing.contains("08:00 March &lt;r1&gt; &amp;") && drawing.contains("23:00")
                && drawing.contains("filter: &lt;R1&gt; &amp;"));
#endif
        QVERIFY(save("cmdSaveCalendar", "/no/such/folder/x").join('|').contains("could not be written"));
        save("cmdSaveCalendar", path);
        const QByteArray calendar = readFile(path + ".ics");
        QVERIFY(calendar.contains("SUMMARY:March")
                && calendar.contains("SUMMARY:April")); // of other days too
        QCOMPARE(calendar.count("BEGIN:VEVENT"), 2);
        QVERIFY(save("cmdSaveCalendar", "").isEmpty());
    }

    void aServerThatFails() {
        Agenda agenda;
        const int id = agenda.addRun("March", Pending, when(1, "08:00:00"));
        agenda.open();
        agenda.program.messages.answer(true, [&] { agenda.program.fault.arm(3); });
        agenda.drag(id, agenda.pointOf(when(3, "10:00:00")));
        agenda.drop(agenda.pointOf(when(3, "10:00:00")));
        agenda.program.fault.arm(0);
        QCOMPARE(agenda.shown().last(), QString("Error saving schedule"));
        QCOMPARE(agenda.stored(id), when(1, "08:00:00"));
        QCOMPARE(agenda.drawing().runOf(id)->start, when(1, "08:00:00"));
    }

    void fromTheMainScreen() {
        Schedules schedules;
        const WallClock today = WallClock::now();
        const int waiting = schedules.add("waiting", Pending, today.stored());
        const int over = schedules.add("over", Completed, today.stored(), today.stored());
        const int running = schedules.add("running", Processing, today.stored(), today.stored());
        frmMainScreen main(schedules.program.context);
        main.show();
        schedules.program.messages.answer(true);
        inNextModal<frmAgenda>([&](frmAgenda& agenda) {
            auto& runs = child<uctListView>(agenda, "lstRuns");
            const auto open = [&](int id) {
                QVERIFY(runs.selectId(id));
                press(agenda, "cmdOpen");
            };
            inNextModal<frmSchedule>([](frmSchedule& editor) {
                child<QLineEdit>(editor, "txtTitle").setText("renamed");
                press(editor, "cmdSave");
            });
            open(waiting);
            QCOMPARE(runs.textOf(waiting, 1), QString("renamed"));
            inNextModal<frmScheduleView>([](frmScheduleView& log) { press(log, "cmdExit"); });
            open(over);
            open(running);
            QCOMPARE(runs.textOf(running, 2), QString("Completed with Errors"));
            press(agenda, "cmdExit");
        });
        press(main, "cmdAgenda");
        QVERIFY(schedules.shown().first().startsWith("The schedule 'running' is being processed"));
        QCOMPARE(child<uctListView>(main, "lstSchedules").textOf(waiting, 0), QString("renamed"));
    }
};

static const AnnounceTest<AgendaTest> announced;
#include "AgendaTest.moc"
