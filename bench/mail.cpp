#include "BenchServer.h"
#include "addresses/AddressBook.h"
#include "addresses/AddressImport.h"
#include "addresses/modMailAddresses.h"

#include <QTemporaryDir>
#include <benchmark/benchmark.h>

/// The e-mail address book with N entries: reading them from a file, and replacing the stored book.
namespace {

BenchServer& server() {
    static BenchServer server;
    return server;
}

QList<MailEntry> entries(int count) {
    QList<MailEntry> made;
    for (int i = 0; i < count; ++i)
        made.append({"BW10023", QString("O'Hara's Depot %1").arg(i), QString::number(1 + i % 5),
                     QString("depot.%1@example.com").arg(i)});
    return made;
}

void importing(benchmark::State& state) {
    const QTemporaryDir folder;
    const QString path = folder.filePath("addresses.csv");
    writeAddressFile(path, entries(int(state.range(0))));
    for (auto _ : state) {
        const AddressFile file = readAddressFile(path);
        AddressBook book;
        for (const ImportRow& row : mapLines(file, layoutsFor(file).first(), {}, book, [](qsizetype) {}))
            book.AddEntrytoGrid(row.entry);
        benchmark::DoNotOptimize(book.entries().size());
    }
}

void saving(benchmark::State& state) {
    Connection& db = server().session.db();
    QList<MailEntry> book = entries(int(state.range(0)));
    const qint64 before = db.statementCount();
    for (auto _ : state) {
        book.first().level =
            book.first().level == "1" ? "2" : "1"; // a book that is stored already would not be written
        if (saveMailAddresses(db, book, readMailAddresses(db), [](qsizetype) {}))
            state.SkipWithError("changed");
    }
    state.counters["statements"] = double(db.statementCount() - before) / double(state.iterations());
    state.counters["peakMiB"] = peakMemory();
}

} // namespace

BENCHMARK(importing)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);
BENCHMARK(saving)->Arg(1'000)->Arg(10'000)->Unit(benchmark::kMillisecond);
