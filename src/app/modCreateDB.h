#pragma once

#include <QString>
#include <functional>

struct Session;

/// Creates NorvaScheduler, where it is not there yet, and fills it from the scripts beside the
/// application, telling each step. Throws DbError; a database that was made but not filled is taken away
/// again, so that the next login starts afresh.
void createFromScripts(Session& session, const std::function<void(const QString& step)>& tell);
