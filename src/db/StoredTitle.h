#pragma once

#include <QString>

/// Titles are stored with two apostrophes for each double quote; rows are compared in that form.
inline QString storedTitle(QString title) {
    return title.replace('"', "''");
}

/// A stored title as users see it.
inline QString shownTitle(QString stored) {
    return stored.replace("''", "\"");
}
