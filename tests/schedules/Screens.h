#pragma once

#include "base/WallClock.h"
#include "schedules/ScheduleStatus.h"
#include "support/Caller.h"
#include "support/TestProgram.h"

#include <QTest>
#include <QToolButton>

/// A screen over one schedule of a program whose other schedules are gone.
template <class Screen>
struct ScheduleScreen {
    TestProgram program;
    Caller caller;
    std::unique_ptr<Screen> screen;

    explicit ScheduleScreen(const QString& user = Session::serverLoginName) {
        program.logIn(user);
        db().execute(sql("DELETE FROM NorvaScheduler.dbo.tblLogs"));
        db().execute(sql("DELETE FROM NorvaScheduler.dbo.tblSchedule"));
    }
    Connection& db() { return program.other(); }
    int templateOf(const QString& account) {
        return db()
            .scalar(
                sql("SELECT MIN(TemplateID) FROM NorvaScheduler.dbo.tblTemplate WHERE TemplateType = 0 AND "
                    "UnitabAccount = {}",
                    account))
            .toInt();
    }
    /// A row as another program would write it, for the project Brightwater.
    int add(const QString& title, int status, const WallClock& runDate,
            const QString& project = "Brightwater") {
        db().execute(
            sql("INSERT INTO NorvaScheduler.dbo.tblSchedule (ScheduleTitle, TemplateID, ProjectRef, RunDate, "
                "Status, RanDate, Username) VALUES ({}, {}, {}, {}, {}, {}, N'Amelia.Hart')",
                title, templateOf("BW10023"), project, runDate.stored(), status,
                (isFinished(status) ? runDate.addSecs(60) : WallClock()).stored()));
        return int(db().scalar(sql("SELECT @@IDENTITY")).toDouble());
    }
    int show(int scheduleId) {
        screen = std::make_unique<Screen>(program.context);
        const int result = screen->Setup(scheduleId);
        screen->SetCallback(&caller, "Calledback");
        screen->show();
        screen->activateWindow();
        [this] { QVERIFY(QTest::qWaitForWindowActive(screen.get())); }(); // shortcuts work nowhere else
        return result;
    }
    template <class Widget>
    Widget& control(const QString& name) {
        return *screen->template findChild<Widget*>(name);
    }
    void press(const QString& button) { control<QAbstractButton>(button).click(); }
    bool closedWithCallback() const { return !screen->isVisible() && caller.calls == 1; }
    QStringList shown() { return program.messages.takeShown(); }
    /// "title|project|status|user" of every row.
    QStringList rows() {
        QStringList rows;
        const RecordSet set = db().query(sql("SELECT ScheduleTitle, ProjectRef, Status, Username FROM "
                                             "NorvaScheduler.dbo.tblSchedule ORDER BY ScheduleID"));
        for (const Row row : set)
            rows << QStringList{row.text(0), row.text(1), row.text(2), row.text(3)}.join('|');
        return rows;
    }
};
