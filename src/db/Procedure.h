#pragma once

#include "db/Connection.h"

/// Makes a stored procedure anew and runs it; returns the first record set. Where another desk makes or drops
/// the same procedure in the same moment, the one that is there is run. Throws DbError.
RecordSet runRecreated(Connection& connection, const Sql& drop, const Sql& create, const Sql& execute);
