#pragma once

#include <QStringList>

struct Session;

/// What stands for the cost centre of numbers that have none.
inline constexpr auto noCostCentre = "No Cost Centre allocated";

/// Names of the cost-centre tables, unquoted and without their database.
QString masterTable(const QString& account);        ///< in CostCentres
QString masterCentresTable(const QString& account); ///< in CostCentres
QString userTable(const Session& session);          ///< in CostCentres and in the project
QString userCentresTable(const Session& session);   ///< in CostCentres

/// The older preparation, for the user alone: `<user>_TblCC` in the project is filled from the master.
/// Throws DbError.
void prepareUserCostCentres(Session& session);

/// The user's copy of the current project's allocation: tables are made when missing, numbers that the
/// master gained are added with the master's cost centres, what the user changed stays, and the copy is
/// carried into the project. A full rebuild also renews the user's list of cost centres. The default
/// database is restored. Throws DbError.
void prepareAccountCostCentres(Session& session, bool fullRebuild);

/// The cost centres of a level 1 to 5 in ascending order, without the empty ones, from the user's table
/// in the project or from the account's master table.
enum class CostCentreSource { UserInProject, Master };
QStringList readCostCentres(Session& session, int level, CostCentreSource source);
