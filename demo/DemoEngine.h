#pragma once

#include "base/WallClock.h"
#include "db/Connection.h"

#include <optional>

class clsReport;
class clsTemplate;

/// Stands in for the analysis product's engine: runs schedules whose time has come. It makes no report
/// files; it looks whether the reports would find data and stores the outcome as the engine does. Any
/// number of engines may work on one server.
class DemoEngine {
public:
    /// `work` is called once in each run, between its start and its end, and stands for the time that
    /// the reports take. The connection must outlive the engine.
    explicit DemoEngine(
        Connection& connection, std::function<void()> work = [] {},
        std::function<void(const QString& line)> tell = [](const QString&) {});

    /// Runs what is due at `now`, the oldest first, and returns how many schedules it brought to an
    /// end. Throws DbError; a run that a lost connection cut off is taken up again by the next call.
    int runDueSchedules(const WallClock& now);
    /// Lets runDueSchedules() return after the run that it is in.
    void stop() { m_stopped = true; }

private:
    struct DueSchedule {
        int id;
        QString title;
        QString storedRunDate;
        WallClock runDate;
    };
    struct LogRow {
        int reportId;
        int errorCode; ///< 0 for success
        QString description;
        QString reportName;
    };

    QList<DueSchedule> dueSchedules(const WallClock& now);
    bool claim(const DueSchedule& schedule);
    bool run(const DueSchedule& schedule);
    QList<LogRow> outcome(int scheduleId);
    QList<LogRow> reportRows(const clsTemplate& reportTemplate, const QString& project);
    QList<LogRow> subProjectRows(const clsTemplate& subProjects);
    bool reportFindsData(const clsReport& report, const QString& project, bool defaultDates);
    bool finish(const DueSchedule& schedule, const QList<LogRow>& rows);

    Connection& m_connection;
    std::function<void()> m_work;
    std::function<void(const QString&)> m_tell;
    std::optional<DueSchedule> m_claimed; ///< the run that is not yet finished
    bool m_stopped = false;
};
