#pragma once

#include "base/WallClock.h"

#include <QList>
#include <QString>

struct Session;

/// The projects that a user chose last, kept beside the application in "<user>_CallHistory.csv": a
/// line for each, its name and when it was chosen, newest first.
namespace projectHistory {

struct Entry {
    QString project;
    WallClock lastUsed;
};

inline constexpr int mostEntries = 15;

/// A file that is damaged or far too large counts as empty, which is written to the error log.
QList<Entry> read(const Session& session);
/// Puts a project on top. That it cannot be written is written to the error log only: the history is
/// a convenience.
void remember(const Session& session, const QString& project, const WallClock& when = WallClock::now());

} // namespace projectHistory
