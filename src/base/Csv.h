#pragma once

#include <QStringList>

/// A line of comma-separated values without its end: every field in double quotes, those inside doubled.
QString csvLine(QStringList fields);

/// Spreadsheets take a field that begins with one of = + - @ for a formula and run it, in double quotes or
/// not. An apostrophe before it makes it a text; the second function takes it away again.
QString guardFormula(const QString& field);
QString unguardFormula(const QString& field);

enum class Blanks { Kept, Trimmed };

/// The fields of such a line. Only a field that begins with a double quote is a quoted one, which may hold
/// commas; `blanks` says what becomes of those around the others. Empty when a quoted field does not end.
QStringList csvFields(const QString& line, Blanks blanks = Blanks::Kept);
