#pragma once

#include "base/WallClock.h"
#include "schedules/ScheduleStatus.h"

#include <QString>
#include <vector>

class clsTemplate;
struct Session;

/// A row of tblLogs: what a run of a schedule reported.
struct LogEntry {
    int id = 0;
    int reportId = -1; ///< -1: about the schedule itself
    int errorCode = 0; ///< 0 for success
    QString reportName;
    QString description;

    bool isError() const { return errorCode != 0; }
    /// "ErrorCode #17:No calls were found".
    QString details() const;
};

/// The log of a schedule in the order in which it was written. Names that the rows lack are taken from
/// the schedule's template, however many rows there are; a report that it no longer holds is called
/// "(deleted Report)".
std::vector<LogEntry> readScheduleLog(Session& session, int scheduleId, const clsTemplate& scheduleTemplate);
/// "2 of 7 reports failed", and what the schedule itself reported.
QString logSummary(const std::vector<LogEntry>& log);
/// All of a log as a CSV file's text, with captions.
/// The heading, "Schedule,March", stands in lines of its own before the table.
QString logAsCsv(const QList<std::pair<QString, QString>>& heading, const std::vector<LogEntry>& log);
/// The keys behind a log entry, for those who look for faults.
QString diagnosticLine(Session& session, int reportId);

/// When a schedule ran and how late that was; without the delay where it ran in time or never.
QString ranText(const WallClock& runDate, const WallClock& ranDate);
/// A stored status, or NoSuchSchedule, as the log view words it.
QString logStatusText(ScheduleStatus status);
/// A project reference of more than 100 characters cut in its middle: its beginning up to the third
/// backslash, "..." and its end from a backslash on, less than 50 characters.
QString shortenedProject(const QString& project);
