#pragma once

#include "db/DbError.h"

#include <optional>

/// The DbError that an action throws; nothing when it succeeds.
template <class Action>
std::optional<DbError> errorOf(Action action) {
    try {
        action();
    } catch (const DbError& error) {
        return error;
    }
    return {};
}
