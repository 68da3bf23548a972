#pragma once

#include "schedules/ScheduleRow.h"

#include <QList>

struct Session;

/// Which titles, as stored, other schedules have already; none when it is these very rows that are stored.
QStringList usedTitles(Session& session, const QList<ScheduleRow>& rows);

/// Stores new schedules, all or none, after the rules of a single one. The titles, as stored, that other
/// schedules have: then nothing is written. Rows that an earlier call wrote, whose answer got lost, are found
/// again and are no obstacle. Throws a Refusal of a text that does not fit, or when the template is gone.
QStringList saveSeries(Session& session, const QList<ScheduleRow>& rows);
