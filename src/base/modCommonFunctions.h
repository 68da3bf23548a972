#pragma once

#include <QString>

/// At most three units, "2 Days, 0 Hours, 5 Mins"; nothing below a minute unless seconds are shown.
QString durationText(qint64 seconds, bool showSeconds);
/// The beginning of a text, without half a letter at its end.
QString cutText(const QString& text, qsizetype longest);
/// "March (2)": a title with a number behind it, in place of one that it has already, cut to a length.
QString numberedTitle(const QString& title, int number, qsizetype longest);
