#pragma once

#include <QString>

/// The distance bands of calls, counted from 1; the places are stored in the database.
namespace distanceBands {

inline constexpr int Count = 23;

struct Range {
    int first;
    int last;
};
inline constexpr Range FixedLine{1, 5};
inline constexpr Range Mobile{6, 17};
inline constexpr Range Idc{18, 23};

/// Empty for an index outside 1 to 23.
QString name(int index);
/// 0 when no band has exactly this name, letter case included.
int byName(const QString& name);
/// The bands into which the calls fall that a call filter lets through.
Range suiting(int callFilter, int billType);

} // namespace distanceBands
