#pragma once

#include "db/DbError.h"

#include <QTest>
#include <memory>
#include <optional>

std::unique_ptr<QObject> sqlTest();
std::unique_ptr<QObject> connectionTest();
std::unique_ptr<QObject> odbcDriverTest();
std::unique_ptr<QObject> odbcServerTest();
std::unique_ptr<QObject> sqlServerTest();
std::unique_ptr<QObject> securityFileTest();

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
