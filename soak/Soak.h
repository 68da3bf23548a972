#pragma once

#include "soak/Journal.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QStringList>
#include <vector>

namespace soak {

/// The programs at work on one server file: two that save, the windows, the demo engine. One of those that
/// save is killed again and again, and what it leaves is compared with what it was told.
class Soak {
public:
    /// Builds the demo server in the folder and starts all; `program` runs the roles of soak/programs.h,
    /// `engine` is the demo engine. Throws DbError or std::runtime_error.
    Soak(const QString& folder, const QString& program, const QString& engine);

    /// Kills the one at a random moment, looks at what it left and starts it anew.
    void killOnce();
    /// Ends all programs and looks at what both have left.
    void end();
    /// Compares what is stored with the journals of programs that do not run.
    void settle();

    /// What was found so far; empty when all is well.
    const QStringList& problems() const { return m_problems; }
    int saves() const { return m_steady.saves() + m_killed.saves(); }
    /// Prints the counts. Tells, and counts as a problem, which programs keep growing.
    void report();

    static QString server(const QString& folder) { return "file:" + folder + "/server.db"; }
    static QString appFolder(const QString& folder) { return folder + "/app"; }
    static QString journal(const QString& folder, const QString& saver) {
        return folder + '/' + saver + ".journal";
    }

private:
    struct Size {
        double megabytes = 0;
        double descriptors = 0;
    };
    struct Program {
        QString name;
        QString path;
        QStringList arguments;
        std::unique_ptr<QProcess> process;
        std::vector<Size> sizes; ///< once a second
    };

    void start(Program& program);
    void waitFor(int milliseconds);
    void look();
    void settle(Ledger& ledger);
    void requireWholeServer();
    void reportSizes(const Program& program);
    void addProblem(const QString& problem);

    QString m_folder;
    Connection m_db;
    Ledger m_steady;
    Ledger m_killed;
    std::vector<Program> m_lasting; ///< the steady saver, the windows, the engine
    Program m_victim;
    QElapsedTimer m_sinceLook;
    QStringList m_problems;
    std::map<Fault, int> m_faults;
    int m_kills = 0;
};

} // namespace soak
