#pragma once

#include "db/DbError.h"

namespace embedded {

/// What the embedded server does not know, refused by name.
inline DbError notSupported(const QString& what) {
    return DbError(0, "not supported by the embedded server: " + what);
}

inline DbError invalidColumn(const QString& name) {
    return DbError(DbError::InvalidColumn, QString("Invalid column name '%1'.").arg(name));
}

inline DbError invalidObject(const QString& name) {
    return DbError(DbError::InvalidObject, QString("Invalid object name '%1'.").arg(name));
}

inline DbError noSuchDatabase(const QString& name) {
    return DbError(
        DbError::NoSuchDatabase,
        QString("Database '%1' does not exist. Make sure that the name is entered correctly.").arg(name));
}

inline DbError alreadyExists(const QString& name) {
    return DbError(DbError::AlreadyExists,
                   QString("There is already an object named '%1' in the database.").arg(name));
}

} // namespace embedded
