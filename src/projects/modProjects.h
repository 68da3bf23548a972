#pragma once

#include <QString>

struct Session;

/// Makes a project the session's current one and reads its account, bill type, default dates and
/// Wispera flag. Throws DbError, with the former project still current, when it cannot be read.
void openProject(Session& session, const QString& database);

/// Reads the current project's default dates anew. Bills are imported now and then, not every moment: the
/// server is asked once a minute at most. While it cannot answer, the dates stay as they are known.
void refreshBillDates(Session& session);

/// The one-time repair of a project whose bills do not hold their current account: every bill keeps
/// its former account in CurrentUnitabAccount and takes the account of the project's first bill, in
/// one statement or row by row. Returns whether there was anything to repair.
bool CheckForCurrentUnitabAccountField(Session& session, bool inOneStatement);

/// Whether the current project has a cost-centre table of its account. The default database is restored.
bool masterCostCentresExist(Session& session);

/// Makes a project current with the checks that every way of choosing one makes, the repair of its bills
/// included. Why it cannot be used, in words for the user; then, and when DbError is thrown, the former
/// project stays current. Empty when it is current.
QString takeProject(Session& session, const QString& database);
