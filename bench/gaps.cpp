#include "app/openServer.h"
#include "demo/DemoApplication.h"
#include "demo/DemoServer.h"
#include "demo/walk/walkProgram.h"
#include "ui/EventLoopWaiter.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QElapsedTimer>
#include <QSettings>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <thread>
#include <vector>

/// The longest gaps between two turns of the event loop over the whole walk, with a slow server:
/// bench-gaps [milliseconds for each answer] [every how many batches it says nothing for five seconds, 0
/// never]
///            [blocking]
/// Prints the round trips, the time and the longest gap of each step as well.
namespace {

struct Slowness {
    std::chrono::milliseconds answer{};
    int silentEvery = 0;
    std::atomic<int> batches = 0;
};

class SlowServer : public Server {
public:
    SlowServer(std::unique_ptr<Server> server, Slowness& slowness)
        : m_server(std::move(server)), m_slowness(slowness) {}

    Results execute(const Sql& batch) override {
        travel();
        return m_server->execute(batch);
    }
    void begin() override { m_server->begin(); } // travels with the next batch
    void commit() override {
        travel();
        m_server->commit();
    }
    void rollback() override {
        travel();
        m_server->rollback();
    }
    void cancel() override { m_server->cancel(); }

private:
    void travel() {
        const int batch = ++m_slowness.batches;
        const bool silent = m_slowness.silentEvery > 0 && batch % m_slowness.silentEvery == 0;
        std::this_thread::sleep_for(silent ? std::chrono::seconds(5) : m_slowness.answer);
    }

    std::unique_ptr<Server> m_server;
    Slowness& m_slowness;
};

/// Time in which the event loop neither turned nor slept.
class Gaps : public QObject {
public:
    Gaps() {
        auto* dispatcher = QAbstractEventDispatcher::instance();
        connect(dispatcher, &QAbstractEventDispatcher::awake, this, [this] { turn(); });
        connect(dispatcher, &QAbstractEventDispatcher::aboutToBlock, this, [this] {
            turn();
            m_sinceTurn.invalidate();
        });
    }
    /// Since the last call.
    qint64 longest() { return std::exchange(m_longest, 0); }
    void print() {
        std::ranges::sort(m_gaps, std::greater());
        std::printf("longest gaps:");
        for (std::size_t i = 0; i < std::min<std::size_t>(10, m_gaps.size()); ++i)
            std::printf(" %lld", static_cast<long long>(m_gaps[i]));
        std::printf(" ms\n");
    }

private:
    void turn() {
        if (m_sinceTurn.isValid()) {
            m_gaps.push_back(m_sinceTurn.elapsed());
            m_longest = std::max(m_longest, m_gaps.back());
        }
        m_sinceTurn.start();
    }

    QElapsedTimer m_sinceTurn;
    std::vector<qint64> m_gaps;
    qint64 m_longest = 0;
};

} // namespace

int main(int argc, char* argv[]) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    const QTemporaryDir folder;
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, folder.path());
    const QString file = folder.filePath("server.db");
    DemoServer::build(file, {});
    demoApplication::create(folder.filePath("app"));

    Slowness slowness;
    if (argc > 1) slowness.answer = std::chrono::milliseconds(std::atoi(argv[1]));
    if (argc > 2) slowness.silentEvery = std::atoi(argv[2]);
    const auto opener = [&](const ConnectionString& target) {
        return std::make_unique<SlowServer>(openServer(target), slowness);
    };
    EventLoopWaiter waiter;
    Gaps gaps;
    QElapsedTimer clock;
    clock.start();
    // What the step before it cost, with what the program does in the background meanwhile.
    const auto note = [&, batches = 0]() mutable {
        const int now = slowness.batches;
        return QString("(%1 round trips, %2 ms, longest gap %3 ms)")
            .arg(now - std::exchange(batches, now))
            .arg(clock.restart())
            .arg(gaps.longest());
    };
    const bool passed = walkProgram(application, {"file:" + file,
                                                  folder.filePath("app"),
                                                  {},
                                                  DEMO_ENGINE,
                                                  opener,
                                                  argc > 3 ? nullptr : &waiter,
                                                  note});
    std::printf("answers after %s ms, %d batches\n", argc > 1 ? argv[1] : "0", slowness.batches.load());
    gaps.print();
    return passed ? EXIT_SUCCESS : EXIT_FAILURE;
}
