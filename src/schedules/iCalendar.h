#pragma once

#include "schedules/AgendaRun.h"

#include <QByteArray>
#include <vector>

class QDateTime;

/// Runs as an iCalendar file (RFC 5545) for calendar programs. Times are those of a wall clock, without a
/// zone; an event has the same identifier whenever it is written, so that a later file replaces it.
/// `stampUtc` is when the file is made.
QByteArray asCalendar(const std::vector<AgendaRun>& runs, const QString& serverName,
                      const QDateTime& stampUtc);
