#pragma once

#include <QSet>
#include <QStringList>

struct Session;

/// Tables that sub-projects are made from and the current project lacks.
QStringList missingSubProjectTables(Session& session);

/// The cost centres of a level 1 to 5 that the user may choose sub-projects from, in ascending order,
/// with noCostCentre at the end for users who may see everything. Throws DbError.
QStringList subProjectCostCentres(Session& session, int level);

/// The same for the address book, from the lists of cost centres instead of the allocations of numbers;
/// an account without a list has none.
QStringList addressCostCentres(Session& session, int level);

/// The cost centres of an account's level that the e-mail address book has an entry for, as serverKey().
QSet<QString> centresWithAddress(Session& session, const QString& account, int level);
