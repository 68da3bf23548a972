#pragma once

#include "commands/oneNamed.h"
#include "schedules/ScheduleList.h"
#include "schedules/ScheduleLog.h"

#include <QJsonObject>
#include <optional>

struct Session;

/// A schedule that the user sees, with the dates that the main screen shows one of.
struct SeenSchedule {
    ScheduleListRow row;
    QString runDate; ///< as stored
    QString ranDate;

    QString due() const; ///< ISO; empty for none, and marked where the stored text is no date
    QString ran() const;
    QString status() const; ///< as the main screen tells it
    /// Title, status, due, ran, contents, template, project.
    QStringList cells() const;
    QJsonObject json() const;
};

/// All that the user sees: those that wait by the date at which they are due, then those that have ended.
QList<SeenSchedule> seenSchedules(Session& session);
/// The one that is named by its ID or its exact title. Throws CommandFailure for none, and for several.
SeenSchedule findSchedule(Session& session, const QString& name);
/// Nothing when it is gone, or the user's no more.
std::optional<SeenSchedule> findSchedule(Session& session, int id);
/// Its log; its reports have their names from its template, as far as that is still there.
std::vector<LogEntry> logOf(Session& session, const SeenSchedule& schedule);
