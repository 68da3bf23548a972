#pragma once

#include "base/WallClock.h"
#include "ui/ListModel.h"

/// Shows a text and sorts by its date; what has none comes first.
inline ListCell dateCell(const QString& shown, const std::optional<WallClock>& date) {
    return {shown, date ? std::optional(double(date->order())) : std::nullopt};
}
