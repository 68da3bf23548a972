#include "soak/Soak.h"

#include "app/openServer.h"
#include "base/Session.h"
#include "demo/DemoApplication.h"
#include "demo/DemoServer.h"
#include "embedded/Sqlite.h"

#include <QDir>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QThread>
#include <csignal>
#include <cstdio>
#include <sys/prctl.h>
#include <unistd.h>

namespace soak {

namespace {

int random(int below) {
    return QRandomGenerator::global()->bounded(below);
}

/// Rows of a table whose owner is gone.
Sql orphans(const char* table, const char* key, const char* owners) {
    return sql(
        "SELECT COUNT(*) FROM NorvaScheduler.dbo.{} WHERE {} NOT IN (SELECT {} FROM NorvaScheduler.dbo.{})",
        Name(table), Name(key), Name(key), Name(owners));
}

} // namespace

Soak::Soak(const QString& folder, const QString& program, const QString& engine)
    : m_folder(folder),
      m_db({Session::serverLoginName, DemoServer::loginPassword, "NorvaScheduler", server(folder)},
           openServer),
      m_steady("steady", journal(folder, "steady")),
      m_killed("killed", journal(folder, "killed")),
      m_victim{"saver that is killed", program, {"save", folder, m_killed.saver()}, {}, {}} {
    DemoServer::build(QDir(folder).filePath("server.db"), DemoOptions::small());
    demoApplication::create(appFolder(folder));
    m_lasting.push_back({"steady saver", program, {"save", folder, m_steady.saver()}, {}, {}});
    m_lasting.push_back({"windows", program, {"screens", folder}, {}, {}});
    m_lasting.push_back({"engine", engine, {server(folder), "--seconds-per-run", "0"}, {}, {}});
    for (Program& lasting : m_lasting) start(lasting);
    start(m_victim);
    m_sinceLook.start();
}

void Soak::start(Program& program) {
    program.process = std::make_unique<QProcess>();
    program.process->setProcessChannelMode(QProcess::ForwardedErrorChannel);
    program.process->setStandardOutputFile(QProcess::nullDevice());
    // However this program ends, no other may be left at work.
    program.process->setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
    program.process->start(program.path, program.arguments);
    if (!program.process->waitForStarted()) addProblem(program.name + " does not start");
}

void Soak::addProblem(const QString& problem) {
    m_problems << problem;
    std::fprintf(stderr, "%s\n", qPrintable(problem));
}

void Soak::waitFor(int milliseconds) {
    QElapsedTimer clock;
    clock.start();
    while (!clock.hasExpired(milliseconds)) {
        QThread::msleep(5);
        if (m_sinceLook.elapsed() >= 1000) look();
    }
}

/// Every program that is to last is still there, and how large it is.
void Soak::look() {
    m_sinceLook.start();
    for (Program& program : m_lasting) {
        if (!program.process) continue;
        const QString place = QString("/proc/%1/").arg(program.process->processId());
        QFile pages(place + "statm");
        if (program.process->waitForFinished(0) || !pages.open(QIODevice::ReadOnly)) {
            addProblem(program.name + " has ended by itself");
            program.process.reset();
            continue;
        }
        const QList<QByteArray> counts = pages.readAll().split(' ');
        const double own =
            counts.value(1).toDouble() - counts.value(2).toDouble(); // resident, less pages of files
        const auto descriptors = QDir(place + "fd").entryList(QDir::Files | QDir::System).size();
        program.sizes.push_back({own * double(sysconf(_SC_PAGESIZE)) / 1e6, double(descriptors)});
    }
}

void Soak::killOnce() {
    constexpr int patience = 120'000;
    QElapsedTimer clock;
    clock.start();
    if (random(8) != 0) { // else even while it logs in
        while (!m_killed.hasNews() && !clock.hasExpired(patience)) waitFor(5);
        if (!m_killed.hasNews()) addProblem("nothing is saved any more");
    }
    waitFor(random(1000));
    m_victim.process->kill();
    m_victim.process->waitForFinished();
    if (m_victim.process->exitStatus() != QProcess::CrashExit)
        addProblem(m_victim.name + " has ended by itself");
    ++m_kills;
    settle(m_killed);
    start(m_victim);
}

void Soak::end() {
    m_victim.process->kill();
    m_victim.process->waitForFinished();
    for (Program& program : m_lasting) {
        if (!program.process) continue;
        program.process->kill();
        program.process->waitForFinished();
    }
    settle();
}

void Soak::settle() {
    settle(m_steady);
    settle(m_killed);
}

void Soak::settle(Ledger& ledger) {
    ledger.settle(m_db, [this](Fault fault, const QString& what) {
        ++m_faults[fault];
        addProblem(QStringList{"lost: ", "doubled: ", "half there: "}[int(fault)] + what);
    });
    requireWholeServer();
}

void Soak::requireWholeServer() {
    for (const Sql& count : {orphans("tblTemplate_Report", "TemplateID", "tblTemplate"),
                             orphans("tblLogs", "ScheduleID", "tblSchedule")})
        if (const int rows = m_db.scalar(count).toInt(); rows > 0) {
            m_faults[Fault::Half] += rows;
            addProblem(QString("rows without an owner: %1 of %2").arg(rows).arg(count.text()));
        }
    embedded::SqliteFile file(QDir(m_folder).filePath("server.db"), embedded::SqliteFile::Mode::Existing);
    const QString state = std::get<QString>(file.scalar("PRAGMA integrity_check"));
    if (state != "ok") addProblem("the server file is damaged: " + state);
}

/// The first fifth is warming up. A program keeps growing when the last fifth is above the second one by more
/// than a quarter and what caches may take: a leak of each save or refresh is far above that after some
/// minutes.
void Soak::reportSizes(const Program& program) {
    const std::size_t fifth = program.sizes.size() / 5;
    if (fifth == 0) return;
    const auto mean = [&](std::size_t from, double Size::*field) {
        double sum = 0;
        for (std::size_t i = from; i < from + fifth; ++i) sum += program.sizes[i].*field;
        return sum / double(fifth);
    };
    const auto tell = [&](const char* what, double Size::*field, double allowance) {
        const double first = mean(fifth, field);
        const double last = mean(program.sizes.size() - fifth, field);
        std::printf("   %s %6.1f -> %6.1f", what, first, last);
        if (last > first * 1.25 + allowance) addProblem(program.name + " keeps growing: " + what);
    };
    std::printf("%-20s", qPrintable(program.name));
    tell("memory (MB)", &Size::megabytes, 20);
    tell("descriptors", &Size::descriptors, 5);
    std::printf("\n");
}

void Soak::report() {
    std::printf("saves %d   refused %d   kills %d   saves cut off %d\n", saves(),
                m_steady.refused() + m_killed.refused(), m_kills, m_killed.cutOff());
    std::printf("lost %d   doubled %d   half there %d\n", m_faults[Fault::Lost], m_faults[Fault::Doubled],
                m_faults[Fault::Half]);
    for (const Program& program : m_lasting) reportSizes(program);
    std::printf("server file %.1f MB, files beside it %d\n",
                double(QFileInfo(m_folder + "/server.db").size()) / 1e6,
                int(QDir(m_folder).entryList({"server.db?*"}, QDir::Files).size()));
    std::printf("%d problems\n", int(m_problems.size()));
}

} // namespace soak
