#pragma once

#include <QByteArray>
#include <QString>
#include <variant>

namespace embedded {

/// A value as SQLite holds it; monostate is NULL.
using Value = std::variant<std::monostate, qint64, double, QString, QByteArray>;

inline bool isNull(const Value& value) {
    return std::holds_alternative<std::monostate>(value);
}

} // namespace embedded
