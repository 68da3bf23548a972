#pragma once

#include <QString>

/// A list of numbers joined by ", ", cut to its first few: there may be a hundred thousand.
QString fewNumbers(const QString& joined);
