#include "db/Procedure.h"

#include "db/DbError.h"

namespace {

void executeUnless(Connection& connection, const Sql& batch, DbError::Number tolerated) {
    try {
        connection.execute(batch);
    } catch (const DbError& error) {
        if (error.number() != tolerated) throw;
    }
}

} // namespace

RecordSet runRecreated(Connection& connection, const Sql& drop, const Sql& create, const Sql& execute) {
    constexpr int attempts =
        5; // each is lost only to somebody who drops the procedure between two statements
    for (int attempt = 1;; ++attempt) {
        executeUnless(connection, drop, DbError::CannotDrop);
        executeUnless(connection, create, DbError::AlreadyExists);
        try {
            return connection.query(execute);
        } catch (const DbError& error) {
            if (error.number() != DbError::NoSuchProcedure || attempt == attempts) throw;
        }
    }
}
