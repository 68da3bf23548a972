#include "BenchServer.h"
#include "demo/SchedulerContent.h"
#include "schedules/frmMainScreen.h"
#include "ui/MessageBoxes.h"

#include <QApplication>
#include <benchmark/benchmark.h>

/// A refresh of the main screen over N schedules of 500 templates, beside the bare reading of the same
/// rows through the same connection.
namespace {

constexpr int templates = 500;
constexpr int reportsPerTemplate = 20;

BenchServer& serverWith(int schedules) {
    static std::map<int, std::unique_ptr<BenchServer>> servers;
    std::unique_ptr<BenchServer>& server = servers[schedules];
    if (!server) {
        server = std::make_unique<BenchServer>();
        schedulerContent::fillSchedules(server->session.db(), schedules, templates, reportsPerTemplate);
    }
    return *server;
}

void bareReading(benchmark::State& state) {
    Connection& db = serverWith(int(state.range(0))).session.db();
    for (auto _ : state) {
        benchmark::DoNotOptimize(db.query(sql("SELECT * FROM NorvaScheduler.dbo.tblschedule WITH (NOLOCK)")));
        benchmark::DoNotOptimize(db.query(sql("SELECT * FROM NorvaScheduler.dbo.tblTemplate WITH (NOLOCK)")));
        benchmark::DoNotOptimize(
            db.query(sql("SELECT TemplateID, COUNT(*) FROM NorvaScheduler.dbo.tblTemplate_Report "
                         "WITH (NOLOCK) GROUP BY TemplateID")));
    }
}

/// With `changes`, the engine has written one row since the last refresh.
void refresh(benchmark::State& state, bool changes) {
    Session& session = serverWith(int(state.range(0))).session;
    MessageBoxes messages;
    ScreenContext context{session, messages};
    frmMainScreen screen(context);
    screen.resize(1366, 768);
    screen.show();
    QApplication::processEvents();
    for (auto _ : state) {
        if (changes) {
            state.PauseTiming();
            session.db().execute(
                sql("UPDATE NorvaScheduler.dbo.tblSchedule SET Status = 3 - Status WHERE ScheduleID = "
                    "(SELECT MIN(ScheduleID) FROM NorvaScheduler.dbo.tblSchedule WHERE Status IN (0, 3))"));
            state.ResumeTiming();
        }
        screen.FillScheduleList();
        QApplication::processEvents();
    }
    state.counters["peakMiB"] = peakMemory();
}

} // namespace

BENCHMARK(bareReading)->Arg(100)->Arg(1'000)->Arg(10'000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(refresh, unchanged, false)
    ->Arg(100)
    ->Arg(1'000)
    ->Arg(10'000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(refresh, one_changed, true)
    ->Arg(100)
    ->Arg(1'000)
    ->Arg(10'000)
    ->Unit(benchmark::kMillisecond);
