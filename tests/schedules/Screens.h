#pragma once

#include "base/WallClock.h"
#include "schedules/ScheduleStatus.h"
#include "support/Caller.h"
#include "support/Controls.h"
#include "support/TestProgram.h"

#include <QTest>

/// A program whose schedules are those that a test adds.
struct Schedules {
    TestProgram program;

    explicit Schedules(const QString& user = Session::serverLoginName) {
        program.logIn(user);
        db().execute(sql("DELETE FROM NorvaScheduler.dbo.tblLogs"));
        db().execute(sql("DELETE FROM NorvaScheduler.dbo.tblSchedule"));
    }
    Connection& db() { return program.other(); }
    QStringList shown() { return program.messages.takeShown(); }
    int templateOf(const QString& account) {
        return db()
            .scalar(
                sql("SELECT MIN(TemplateID) FROM NorvaScheduler.dbo.tblTemplate WHERE TemplateType = 0 AND "
                    "UnitabAccount = {}",
                    account))
            .toInt();
    }
    /// A row as another program would write it; run time and ran date as stored texts.
    int add(const QString& title, ScheduleStatus status, const QString& runDate, const QString& ranDate = {},
            const QString& user = "Amelia.Hart", int templateId = 0, const QString& project = "Brightwater") {
        db().execute(
            sql("INSERT INTO NorvaScheduler.dbo.tblSchedule (ScheduleTitle, TemplateID, ProjectRef, RunDate, "
                "Status, RanDate, Username) VALUES ({}, {}, {}, {}, {}, {}, {})",
                title, templateId == 0 ? templateOf("BW10023") : templateId, project, runDate, status,
                ranDate, user));
        return int(db().scalar(sql("SELECT @@IDENTITY")).toDouble());
    }
    void addLog(int schedule, int report, int code, const QString& description = {},
                const QString& name = {}) {
        db().execute(
            sql("INSERT INTO NorvaScheduler.dbo.tblLogs (ScheduleID, ReportID, ErrorCode, ErrorDescription, "
                "ReportName) VALUES ({}, {}, {}, {}, {})",
                schedule, report, code, description, name));
    }
    int logs() { return db().scalar(sql("SELECT COUNT(*) FROM NorvaScheduler.dbo.tblLogs")).toInt(); }
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

/// A screen over one schedule.
template <class Screen>
struct ScheduleScreen : Schedules {
    Caller caller;
    std::unique_ptr<Screen> screen;

    using Schedules::Schedules;
    int add(const QString& title, ScheduleStatus status, const WallClock& runDate,
            const QString& project = "Brightwater") {
        const WallClock ranDate = isFinished(status) ? runDate.addSecs(60) : WallClock();
        return Schedules::add(title, status, runDate.stored(), ranDate.stored(), "Amelia.Hart", 0, project);
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
        return child<Widget>(*screen, name);
    }
    void press(const QString& button) { ::press(*screen, button); }
    bool closedWithCallback() const { return !screen->isVisible() && caller.calls == 1; }
};
