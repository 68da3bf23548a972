#include "BenchServer.h"
#include "demo/SchedulerContent.h"
#include "schedules/frmAgenda.h"
#include "schedules/uctAgenda.h"
#include "ui/MessageBoxes.h"

#include <QApplication>
#include <benchmark/benchmark.h>

/// The agenda of N schedules: opening it, and turning from one view of days to the next.
namespace {

struct OpenAgenda {
    BenchServer server;
    MessageBoxes messages;
    ScreenContext context{server.session, messages};
    RunWatch watch;

    explicit OpenAgenda(benchmark::State& state) {
        schedulerContent::fillSchedules(server.session.db(), int(state.range(0)), 20, 20);
    }
};

void openAgenda(benchmark::State& state) {
    OpenAgenda program(state);
    for (auto _ : state) {
        frmAgenda screen(program.context);
        if (screen.Setup(program.watch) != 0) state.SkipWithError("the agenda could not be opened");
        screen.show();
        QApplication::processEvents();
    }
}

/// All of them in one view: a layout, and a picture of it.
void layOutAndPaint(benchmark::State& state) {
    OpenAgenda program(state);
    frmAgenda screen(program.context);
    if (screen.Setup(program.watch) != 0) state.SkipWithError("the agenda could not be opened");
    screen.show();
    auto& agenda = *screen.findChild<uctAgenda*>("agenda");
    const AgendaView view = AgendaView(state.range(1));
    const QDate busiest = agenda.runs()[agenda.runs().size() / 2].start.date();
    for (auto _ : state) {
        agenda.showDays(view, busiest);
        agenda.viewport()->repaint();
    }
}

} // namespace

BENCHMARK(openAgenda)->Arg(100)->Arg(10'000)->Unit(benchmark::kMillisecond);
BENCHMARK(layOutAndPaint)->ArgsProduct({{10'000}, {0, 1, 2}})->Unit(benchmark::kMillisecond);
