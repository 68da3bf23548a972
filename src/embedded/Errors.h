#pragma once

#include "db/DbError.h"

namespace embedded {

/// What the embedded server does not know, refused by name.
inline DbError notSupported(const QString& what) {
    return DbError(0, "not supported by the embedded server: " + what);
}

/// The server's error; %1, %2, … stand for the arguments, texts or integers.
template <class... Args>
DbError serverError(int number, const char* text, const Args&... args) {
    const auto written = [](const auto& value) {
        if constexpr (std::is_integral_v<std::remove_cvref_t<decltype(value)>>)
            return QString::number(value);
        else
            return QString(value);
    };
    return DbError(number, QString(text).arg(written(args)...));
}

inline DbError nestedTooDeeply() {
    return DbError(191,
                   "Some part of your SQL statement is nested too deeply. Rewrite the query or break it up "
                   "into smaller queries.");
}

inline DbError invalidColumn(const QString& name) {
    return serverError(DbError::InvalidColumn, "Invalid column name '%1'.", name);
}

inline DbError invalidObject(const QString& name) {
    return serverError(DbError::InvalidObject, "Invalid object name '%1'.", name);
}

inline DbError noSuchDatabase(const QString& name) {
    return serverError(DbError::NoSuchDatabase,
                       "Database '%1' does not exist. Make sure that the name is entered correctly.", name);
}

inline DbError alreadyExists(const QString& name) {
    return serverError(DbError::AlreadyExists, "There is already an object named '%1' in the database.",
                       name);
}

} // namespace embedded
