#include "schedules/modScheduler.h"

#include "base/Session.h"
#include "base/modCommonFunctions.h"
#include "db/Refusal.h"
#include "db/ServerText.h"
#include "db/StoredTitle.h"
#include "schedules/clsSchedule.h"
#include "templates/modTemplates.h"

#include <QRegularExpression>
#include <QScopeGuard>
#include <QSet>
#include <limits>

ScheduleStatus ReadScheduleStatus(Session& session, int scheduleId) {
    const RecordSet rows = session.db().query(sql(
        "SELECT TOP 1 [Status] FROM NorvaScheduler.dbo.[tblSchedule] WITH (NOLOCK) WHERE ([ScheduleID] = {})",
        scheduleId));
    if (rows.isEmpty()) throw Refusal("This schedule has been deleted by somebody else in the meantime.");
    return scheduleStatus(rows.row(0).integer("Status"));
}

void SetScheduleStatus(Session& session, int scheduleId, ScheduleStatus status) {
    session.db().execute(
        sql("UPDATE NorvaScheduler.dbo.[tblSchedule] SET [Status] = {} WHERE ([ScheduleID] = {})", status,
            scheduleId));
}

void WriteLogEntry(Session& session, int errorCode, const QString& errorDescription) {
    const LogSubject& subject = session.logSubject;
    session.db().execute(
        sql("INSERT INTO NorvaScheduler.dbo.[tblLogs] ([ScheduleID], [ReportID], [ErrorCode], "
            "[ErrorDescription], [ReportName]) VALUES ({}, {}, {}, {}, {})",
            subject.LogScheduleID, subject.LogReportID, errorCode, errorDescription, subject.LogReportName));
}

bool ResetSchedule(Session& session, int scheduleId) {
    Transaction transaction(session.db());
    const QString status = session.db().scalar(
        sql("SELECT [Status] FROM NorvaScheduler.dbo.[tblSchedule] WITH (UPDLOCK) WHERE ([ScheduleID] = {})",
            scheduleId));
    if (scheduleStatus(status.toInt()) != ScheduleStatus::Processing) return false;
    const auto done = qScopeGuard([&] { session.logSubject.LogScheduleID = -1; });
    session.logSubject = {scheduleId, -1, {}};
    WriteLogEntry(session, -1, "Status reset by user");
    SetScheduleStatus(session, scheduleId, ScheduleStatus::CompletedWithErrors);
    transaction.commit();
    return true;
}

void DeleteSchedule(Session& session, int scheduleId) {
    Transaction transaction(session.db());
    lockSchedules(session.db()); // before the logs, as everybody does
    const RecordSet rows = session.db().query(
        sql("SELECT * FROM NorvaScheduler.dbo.[tblSchedule] WITH (NOLOCK) WHERE ([ScheduleID] = {})",
            scheduleId));
    if (!rows.isEmpty()) {
        const ScheduleRow row = ScheduleRow::read(rows.row(0));
        if (!isOwn(session, row))
            throw Refusal(QString("This schedule belongs to %1 now.").arg(row.userName));
    }
    session.db().execute(
        sql("DELETE FROM NorvaScheduler.dbo.[tblLogs] WHERE ([ScheduleID] = {})", scheduleId));
    session.db().execute(
        sql("DELETE FROM NorvaScheduler.dbo.[tblSchedule] WHERE ([ScheduleID] = {})", scheduleId));
    transaction.commit();
}

bool isOwn(const Session& session, const ScheduleRow& schedule) {
    return session.isAdministrator() || sameOnServer(schedule.userName, session.userName);
}

std::optional<int> scheduleOfTitle(Session& session, const QString& title) {
    const RecordSet rows =
        session.db().query(sql("SELECT TOP 1 [ScheduleID] FROM NorvaScheduler.dbo.[tblSchedule] WITH "
                               "(NOLOCK) WHERE ([ScheduleTitle] = {})",
                               storedTitle(title)));
    return rows.isEmpty() ? std::nullopt : std::optional(rows.row(0).integer(0));
}

QString freeScheduleTitle(Session& session, const QString& title) {
    QSet<QString> used;
    for (const Row row : session.db().query(
             sql("SELECT [ScheduleTitle] FROM NorvaScheduler.dbo.[tblSchedule] WITH (NOLOCK)")))
        used << serverKey(shownTitle(row.text(0)));
    QString free = title;
    for (int number = 2; used.contains(serverKey(free)); ++number)
        free = numberedTitle(title, number, clsSchedule::longestTitle);
    return free;
}

QString scheduleTitleProblem(const QString& title) {
    if (title.trimmed().isEmpty()) return "Please enter a schedule title";
    static const QRegularExpression letterOrDigit("[A-Za-z0-9]");
    if (!title.contains(letterOrDigit))
        return "The schedule title must consist of at least one alpha-numeric character (A-Z or 0-9)";
    return {};
}

QString runDateProblem(const WallClock& runDate) {
    constexpr int lastYear = 9999; // that stored dates can have
    if (runDate.date().year() > lastYear)
        return QString("The run date must lie before the year %1").arg(lastYear + 1);
    return runDate.date() < QDate::currentDate() ? "The scheduled run date must be after todays date"
                                                 : QString();
}

QString dueText(const std::optional<WallClock>& runDate, const WallClock& now) {
    if (!runDate || *runDate >= now) return "Pending";
    const qint64 seconds = runDate->secsTo(now);
    const QString prefix = "Pending (Delayed %1)";
    if (seconds > std::numeric_limits<qint32>::max()) {
        const int years = now.date().year() - runDate->date().year();
        return prefix.arg(QString("%1 %2").arg(years).arg(years < 2 ? "Year" : "Years"));
    }
    if (seconds >= 61) return prefix.arg(durationText(seconds, false));
    return seconds >= 1 ? prefix.arg(" <1 Min") : QString("Pending");
}

std::optional<qint64> GetSecondsToRun(Session& session, int scheduleId) {
    clsSchedule schedule(session);
    if (schedule.LoadSchedule(scheduleId) != clsSchedule::Loaded) return std::nullopt;
    return WallClock::now().secsTo(schedule.RunDate());
}
