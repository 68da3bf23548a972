#pragma once

#include <QList>
#include <QStringList>

class Connection;
struct ServerDefaults;

class Sql;

bool schedulerDatabaseExists(Connection& connection);
/// Whether the default database holds the scheduler's tables.
bool schedulerTablesExist(Connection& connection);
/// Sends the CREATE DATABASE of NorvaScheduler. Needs both folders; throws DbError.
void createSchedulerDatabase(Connection& connection, const ServerDefaults& defaults);
void dropSchedulerDatabase(Connection& connection);

/// Those of the columns of which the statement at the same place of `counts` counts none; one round trip.
QStringList missingColumns(Connection& connection, const QStringList& columns, const QList<Sql>& counts);
/// Sends an ALTER TABLE … ADD. False when another program has added the column in this moment, which then
/// fills it as well.
bool addColumn(Connection& connection, const Sql& add);

/// What a login does with excluded numbers of templates that are not stored: left behind, or of one that
/// somebody is making at this moment.
enum class OrphanedNumbers { Purge, Keep };
/// The upgrades that a login makes in the default database: the exclusion table and its orphans, then
/// the distance bands. Safe to repeat; a database with any subset of the later columns comes out whole.
void upgradeAtLogin(Connection& connection, OrphanedNumbers orphans = OrphanedNumbers::Purge);
/// The upgrades that the main screen makes: the later columns of tblTemplate_Report.
void upgradeAtMainScreen(Connection& connection);
