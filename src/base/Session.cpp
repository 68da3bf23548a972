#include "base/Session.h"

#include "db/DbError.h"

Connection& Session::db() const {
    if (!connection) throw DbError(0, "No login has been made.");
    return *connection;
}
