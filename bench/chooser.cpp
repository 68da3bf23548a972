#include "BenchServer.h"
#include "projects/ProjectList.h"

#include <QApplication>
#include <benchmark/benchmark.h>

/// Filling the project chooser on a server with N further databases, half of them projects.
namespace {

void addDatabases(Connection& db, int count) {
    for (int i = 0; i < count; ++i) {
        const QString name = QString("Bench%1").arg(i);
        db.execute(sql("CREATE DATABASE {}", Name(name)));
        if (i % 2 == 0) continue;
        db.execute(sql("CREATE TABLE {}.dbo.Tbl50 (UnitabAccount varchar(20), BillID int)\r\n"
                       "INSERT INTO {}.dbo.Tbl50 VALUES ('BW10023', 1)",
                       Name(name), Name(name)));
    }
}

void fillChooser(benchmark::State& state) {
    BenchServer server;
    addDatabases(server.session.db(), int(state.range(0)));
    const qint64 before = server.session.db().statementCount();
    qsizetype projects = 0;
    for (auto _ : state) projects = loadProjectList(server.session).names.size();
    state.counters["projects"] = double(projects);
    state.counters["statements"] =
        double(server.session.db().statementCount() - before) / double(state.iterations());
}

} // namespace

BENCHMARK(fillChooser)->Arg(10)->Arg(300)->Unit(benchmark::kMillisecond);
