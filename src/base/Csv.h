#pragma once

#include <QStringList>

/// A line of comma-separated values without its end: every field in double quotes, those inside doubled.
QString csvLine(QStringList fields);

enum class Blanks { Kept, Trimmed };

/// The fields of such a line. Only a field that begins with a double quote is a quoted one, which may hold
/// commas; `blanks` says what becomes of those around the others. Empty when a quoted field does not end.
QStringList csvFields(const QString& line, Blanks blanks = Blanks::Kept);
