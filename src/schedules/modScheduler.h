#pragma once

#include "base/WallClock.h"
#include "schedules/ScheduleRow.h"
#include "schedules/ScheduleStatus.h"

#include <QString>
#include <optional>

struct Session;

/// The stored status of a schedule; throws a Refusal when the schedule is gone.
ScheduleStatus ReadScheduleStatus(Session& session, int scheduleId);
void SetScheduleStatus(Session& session, int scheduleId, ScheduleStatus status);
/// One row of tblLogs about the session's log subject.
void WriteLogEntry(Session& session, int errorCode, const QString& errorDescription);
/// Frees a schedule that is stuck in processing: a log row and the status "completed with errors",
/// both or neither. False, with nothing written, when the engine has finished it meanwhile.
bool ResetSchedule(Session& session, int scheduleId);
/// The schedule and its log, both or neither. Throws a Refusal when it is another user's.
void DeleteSchedule(Session& session, int scheduleId);

/// Whether the session's user may change a schedule: it is his own, or he is the administrator.
bool isOwn(const Session& session, const ScheduleRow& schedule);
/// The schedule of a title; nothing when there is none.
std::optional<int> scheduleOfTitle(Session& session, const QString& title);
/// The title itself, or with a number behind it, "March (2)", so that no schedule of any user has it.
QString freeScheduleTitle(Session& session, const QString& title);
/// What is wrong with a schedule title, in words; empty when nothing is. Its length is not looked at.
QString scheduleTitleProblem(const QString& title);
/// What is wrong with the time of a schedule that is saved now; empty when nothing is. Today's past hours are
/// not.
QString runDateProblem(const WallClock& runDate);
/// The status text of a pending schedule at a moment: "Pending" until its time has come, then how
/// long it is overdue; without a date always "Pending".
QString dueText(const std::optional<WallClock>& runDate, const WallClock& now);
/// Seconds from now to the schedule's run date; negative when it is overdue, nothing when the
/// schedule cannot be loaded.
std::optional<qint64> GetSecondsToRun(Session& session, int scheduleId);
