#pragma once

#include <QString>
#include <optional>

/// A threshold's value in ten-thousandths, 0 for no text. Nothing for what is no amount: digits with at
/// most one decimal point, up to 900,000,000,000,000, which a currency value just holds.
std::optional<qint64> thresholdAmount(const QString& text);
