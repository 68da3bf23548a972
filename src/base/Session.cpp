#include "base/Session.h"

#include "db/Refusal.h"

Connection& Session::db() const {
    if (!connection) throw Refusal("No login has been made.");
    return *connection;
}
