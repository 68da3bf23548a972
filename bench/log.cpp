#include "BenchServer.h"
#include "demo/SchedulerContent.h"
#include "schedules/frmScheduleView.h"
#include "ui/MessageBoxes.h"

#include <QApplication>
#include <benchmark/benchmark.h>

/// Opening the log view of a schedule with N log rows.
namespace {

int scheduleWithLog(Connection& db, int rows) {
    schedulerContent::fillSchedules(db, 1, 1, 20);
    const int id = db.scalar(sql("SELECT MIN(ScheduleID) FROM NorvaScheduler.dbo.tblSchedule")).toInt();
    const int report =
        db.scalar(sql("SELECT MIN(ReportID) FROM NorvaScheduler.dbo.tblTemplate_Report")).toInt();
    QList<Sql> values;
    for (int i = 0; i < rows; ++i) {
        values << sql("({}, {}, {}, N'a line of the log', N'')", id, report + i % 20, i % 7 == 0 ? 17 : 0);
        if (values.size() < 500 && i + 1 < rows) continue;
        db.execute(
            sql("INSERT INTO NorvaScheduler.dbo.tblLogs (ScheduleID, ReportID, ErrorCode, ErrorDescription, "
                "ReportName) VALUES {}",
                Sql::join(values, sql(", "))));
        values.clear();
    }
    return id;
}

void openLog(benchmark::State& state) {
    BenchServer server;
    const int id = scheduleWithLog(server.session.db(), int(state.range(0)));
    MessageBoxes messages;
    ScreenContext context{server.session, messages};
    const qint64 before = server.session.db().statementCount();
    for (auto _ : state) {
        frmScheduleView screen(context);
        if (screen.Setup(id) != 0) state.SkipWithError("the log could not be opened");
        screen.show();
        QApplication::processEvents();
    }
    state.counters["statements"] =
        double(server.session.db().statementCount() - before) / double(state.iterations());
}

} // namespace

BENCHMARK(openLog)->Arg(200)->Arg(20'000)->Unit(benchmark::kMillisecond);
