#pragma once

#include <QDate>
#include <QTime>

/// The widest range of call dates and hours, which a new report starts with.
namespace dateRange {

inline const QDate FirstDate(2000, 1, 1);
inline const QDate LastDate(2020, 12, 31);
inline const QTime FirstTime(0, 0, 0);
inline const QTime LastTime(23, 59, 59);

} // namespace dateRange
