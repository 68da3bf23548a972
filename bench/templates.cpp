#include "BenchServer.h"
#include "demo/SchedulerContent.h"
#include "numbers/NumberFile.h"
#include "numbers/NumberList.h"
#include "projects/modProjects.h"
#include "templates/clsTemplate.h"
#include "templates/frmManageTemplates.h"
#include "ui/MessageBoxes.h"

#include <QApplication>
#include <benchmark/benchmark.h>

/// The template manager over N templates and M schedules, the saving of a large template, and the loading of
/// a large number file.
namespace {

void countStatements(benchmark::State& state, Session& session, qint64 before) {
    state.counters["statements"] =
        double(session.db().statementCount() - before) / double(state.iterations());
}

void openManager(benchmark::State& state) {
    BenchServer server;
    schedulerContent::fillSchedules(server.session.db(), int(state.range(1)), int(state.range(0)), 20);
    MessageBoxes messages;
    ScreenContext context{server.session, messages};
    const qint64 before = server.session.db().statementCount();
    for (auto _ : state) {
        frmManageTemplates screen(context);
        if (screen.Setup() != 0) state.SkipWithError("the manager could not be opened");
        screen.show();
        QApplication::processEvents();
    }
    countStatements(state, server.session, before);
}

void saveTemplate(benchmark::State& state) {
    BenchServer server;
    openProject(server.session, "Brightwater");
    clsTemplate large(server.session.db(), server.session.project);
    large.setTitle("A large template");
    large.setUnitabAccount(server.session.project.unitabAccount);
    for (int i = 0; i < state.range(0); ++i) {
        QString key;
        large.Reports().Add(-1, std::make_shared<clsReportParameters>(server.session.project), 2, 161, true,
                            true, false, key);
    }
    const qint64 before = server.session.db().statementCount();
    for (auto _ : state)
        if (large.SaveTemplate() != clsTemplate::Saved)
            state.SkipWithError("the template could not be saved");
    countStatements(state, server.session, before);
}

void loadNumbers(benchmark::State& state) {
    BenchServer server;
    openProject(server.session, "Brightwater");
    const QTemporaryDir folder;
    const QString file = folder.filePath("numbers.csv");
    QStringList numbers;
    for (int i = 0; i < state.range(0); ++i) numbers << QString("01%1").arg(i, 9, 10, QChar('0'));
    numberFile::write(file, numbers);
    NumberList list(server.session);
    list.CreateTblCallsTo();
    for (auto _ : state) list.replace(list.fitting(numberFile::read(file)).numbers, [](int, int) {});
}

} // namespace

BENCHMARK(openManager)->Args({10, 1'000})->Args({1'000, 10'000})->Unit(benchmark::kMillisecond);
BENCHMARK(saveTemplate)->Arg(20)->Arg(200)->Unit(benchmark::kMillisecond);
BENCHMARK(loadNumbers)->Arg(1'000)->Arg(100'000)->Unit(benchmark::kMillisecond);
