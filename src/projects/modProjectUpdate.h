#pragma once

#include <QString>
#include <functional>

struct Session;

/// Adds the three time-band columns to the current project's call tables where they are missing.
/// Throws DbError.
void addTimeBandColumns(Session& session);

/// Recomputes the time bands of a project that was never updated, keeping the earlier ones. `ask` is
/// put the question whether to do it now, unless the analysis product's updater lies beside the
/// program; `tell` hears of each step (number from 1, of how many). Throws DbError; a step that failed
/// leaves the project marked as not updated, so that it is done again.
/// Returns whether the project is up to date now.
bool updateTimeBands(Session& session, bool askFirst, const std::function<bool(const QString& question)>& ask,
                     const std::function<void(int step, int steps)>& tell);
