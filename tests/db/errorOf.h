#pragma once

#include "db/DbError.h"
#include "db/Refusal.h"

#include <optional>

/// The error that an action throws; nothing when it succeeds.
template <class Error = DbError, class Action>
std::optional<Error> errorOf(Action action) {
    try {
        action();
    } catch (const Error& error) {
        return error;
    }
    return {};
}
