#pragma once

#include <QDateTime>
#include <QString>
#include <optional>

/// The zero date: what a schedule that never ran holds.
QDateTime zeroDate();

/// "yyyy-mmm-dd Hh:Nn:Ss" with English months, the form of date texts in the database.
QString storedDate(const QDateTime& date);
/// Reads a stored date text; also ISO forms, which other programs write. Invalid for empty or other text.
QDateTime parseStoredDate(const QString& stored);
/// "dd mmm yyyy Hh:Nn" with English months; "not specified" for an invalid or the zero date.
QString shownDate(const QDateTime& date);
/// What a list shows for a stored date: shownDate, or the text itself, marked, where it is no date.
QString shownStoredDate(const QString& stored);
QDateTime parseShownDate(const QString& shown);
/// A number that grows with a shown date; nothing for a text that is none.
std::optional<qint64> orderOfShownDate(const QString& shown);

/// At most three units, "2 Days, 0 Hours, 5 Mins"; nothing below a minute unless seconds are shown.
QString durationText(qint64 seconds, bool showSeconds);
