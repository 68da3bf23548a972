#include "schedules/ScheduleLog.h"

#include "base/Csv.h"
#include "base/Session.h"
#include "base/modCommonFunctions.h"
#include "templates/clsTemplate.h"

#include <QHash>
#include <QMap>

namespace {

const QString scheduleItself = "Schedule";

QHash<int, QString> reportNames(const clsTemplate& scheduleTemplate) {
    QHash<int, QString> names;
    for (const clsReport& report : scheduleTemplate.Reports()) names.insert(report.ID(), report.ShownTitle());
    return names;
}

bool isAboutSchedule(const LogEntry& entry) {
    return entry.reportId == -1 && entry.reportName == scheduleItself;
}

} // namespace

QString LogEntry::details() const {
    return QString("ErrorCode #%1:").arg(errorCode) + description;
}

std::vector<LogEntry> readScheduleLog(Session& session, int scheduleId, const clsTemplate& scheduleTemplate) {
    const RecordSet rows = session.db().query(
        sql("SELECT [LogID], [ScheduleID], [ReportID], [ErrorCode], [ErrorDescription], [ReportName] FROM "
            "NorvaScheduler.dbo.[tblLogs] WITH (NOLOCK) WHERE ([ScheduleID] = {}) ORDER BY [LogID]",
            scheduleId));
    const QHash<int, QString> names = reportNames(scheduleTemplate);
    std::vector<LogEntry> log;
    log.reserve(std::size_t(rows.rowCount()));
    for (const Row row : rows) {
        LogEntry entry{row.integer("LogID"), row.integer("ReportID"), row.integer("ErrorCode"),
                       row.text("ReportName").trimmed(), row.text("ErrorDescription")};
        if (entry.reportName.isEmpty())
            entry.reportName =
                entry.reportId == -1 ? scheduleItself : names.value(entry.reportId, "(deleted Report)");
        log.push_back(std::move(entry));
    }
    return log;
}

QString logSummary(const std::vector<LogEntry>& log) {
    QMap<std::pair<int, QString>, bool> failed; // a report may have written several rows
    int scheduleErrors = 0;
    for (const LogEntry& entry : log) {
        if (isAboutSchedule(entry))
            scheduleErrors += entry.isError();
        else
            failed[{entry.reportId, entry.reportName}] |= entry.isError();
    }
    QStringList parts;
    const auto failures = std::count(failed.begin(), failed.end(), true);
    if (failures > 0)
        parts << QString("%1 of %2 reports failed").arg(failures).arg(failed.size());
    else if (!failed.isEmpty())
        parts << QString("None of %1 reports failed").arg(failed.size());
    if (scheduleErrors > 0)
        parts << (scheduleErrors == 1
                      ? QString("the schedule itself reported an error")
                      : QString("the schedule itself reported %1 errors").arg(scheduleErrors));
    QString summary = parts.join("; ");
    if (!summary.isEmpty()) summary[0] = summary[0].toUpper();
    return summary;
}

QString logAsCsv(const QList<std::pair<QString, QString>>& heading, const std::vector<LogEntry>& log) {
    QString text;
    for (const auto& [what, value] : heading) text += csvLine({what, guardFormula(value)}) + "\r\n";
    text += "\r\n" + csvLine({"Schedule Report", "Error Code", "Description"}) + "\r\n";
    for (const LogEntry& entry : log)
        text += csvLine({guardFormula(entry.reportName), QString::number(entry.errorCode),
                         guardFormula(entry.description)})
                + "\r\n";
    return text;
}

QString diagnosticLine(Session& session, int reportId) {
    if (reportId == -1) return "System log";
    const QString subType =
        session.db().scalar(sql("SELECT TOP 1 [ReportSubType] FROM NorvaScheduler.dbo.[tblTemplate_Report] "
                                "WITH (NOLOCK) WHERE [ReportID] = {}",
                                reportId));
    return QString("Report-ID:%1 Report-Type:%2").arg(reportId).arg(subType);
}

QString ranText(const WallClock& runDate, const WallClock& ranDate) {
    const QString ran = ranDate.shown();
    if (ranDate.isZeroDate() || ranDate <= runDate) return ran;
    return ran + " (Delayed " + durationText(runDate.secsTo(ranDate), true) + ")";
}

QString logStatusText(ScheduleStatus status) {
    using enum ScheduleStatus;
    switch (status) {
    case Disabled:
        return "Disabled";
    case Processing:
        return "Processing";
    case CompletedWithErrors:
        return "Errors occurred";
    case Completed:
        return "Successfully Completed";
    case NoSuchSchedule:
        return "Unknown";
    default:
        return "Active / Pending";
    }
}

QString shortenedProject(const QString& project) {
    constexpr int longest = 100;
    constexpr int tailLimit = 50;
    if (project.size() <= longest) return project;
    qsizetype headEnd = -1;
    for (int i = 0; i < 3; ++i)
        if (const qsizetype next = project.indexOf('\\', headEnd + 1); next >= 0) headEnd = next;
    // The longest tail that is short enough; a last part that is longer itself is cut.
    qsizetype tailStart = project.indexOf('\\', project.size() - tailLimit + 1);
    if (tailStart < 0) tailStart = project.size() - tailLimit + 1;
    const QString head = headEnd < 0 ? project.left(tailLimit) : project.left(headEnd + 1);
    return head.size() < tailStart ? head + "..." + project.mid(tailStart) : project;
}
