#include "BenchServer.h"
#include "demo/SchedulerContent.h"
#include "schedules/frmMainScreen.h"
#include "ui/MessageBoxes.h"
#include "ui/uctListView.h"

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

struct Hub {
    MessageBoxes messages;
    ScreenContext context;
    frmMainScreen screen;

    explicit Hub(Session& session) : context{session, messages}, screen(context) {
        screen.resize(1366, 768);
        screen.show();
    }
};

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
    Hub hub(session);
    frmMainScreen& screen = hub.screen;
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

/// The main screen from nothing to its first paint. The window's own share, "CPU", is one gap at most.
void firstFill(benchmark::State& state) {
    Session& session = serverWith(int(state.range(0))).session;
    for (auto _ : state) {
        const Hub hub(session);
        QApplication::processEvents();
    }
}

/// What a user does with the list of all pending schedules; each is one gap.
template <class Use>
void inList(benchmark::State& state, Use use) {
    Hub hub(serverWith(int(state.range(0))).session);
    frmMainScreen& screen = hub.screen;
    auto& list = *screen.findChild<uctListView*>("lstSchedules");
    bool again = false;
    for (auto _ : state) {
        use(screen, list, std::exchange(again, !again));
        QApplication::processEvents();
    }
}

void sorting(benchmark::State& state) {
    inList(state, [](frmMainScreen&, uctListView& list, bool) { list.sortBy(0, false); });
}
void filtering(benchmark::State& state) {
    inList(state,
           [](frmMainScreen&, uctListView& list, bool again) { list.setFilterWords(again ? "" : "7"); });
}
void newMinute(benchmark::State& state) {
    inList(state, [](frmMainScreen& screen, uctListView&, bool) { screen.PopulateScreen(true); });
}

} // namespace

BENCHMARK(sorting)->Arg(10'000)->Arg(50'000)->Unit(benchmark::kMillisecond);
BENCHMARK(filtering)->Arg(10'000)->Arg(50'000)->Unit(benchmark::kMillisecond);
BENCHMARK(newMinute)->Arg(10'000)->Arg(50'000)->Unit(benchmark::kMillisecond);
BENCHMARK(bareReading)->Arg(100)->Arg(1'000)->Arg(10'000)->Arg(50'000)->Unit(benchmark::kMillisecond);
BENCHMARK(firstFill)->Arg(100)->Arg(10'000)->Arg(50'000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(refresh, unchanged, false)
    ->Arg(100)
    ->Arg(1'000)
    ->Arg(10'000)
    ->Arg(50'000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(refresh, one_changed, true)
    ->Arg(100)
    ->Arg(1'000)
    ->Arg(10'000)
    ->Arg(50'000)
    ->Unit(benchmark::kMillisecond);
