#pragma once

#include "embedded/Type.h"

#include <QDateTime>

/// Dates between their written forms and the stored one, "yyyy-MM-dd HH:mm:ss.zzz".
namespace embedded::dateText {

enum class Order { MonthDayYear, DayMonthYear, YearMonthDay };

/// Reads a date as the server does: '20080401', '2008/04/01', '2008-04-01T09:05:00', '1 Apr 2008',
/// '2026-Nov-15 09:05:00', 'Apr 1, 2008 9:05PM', … `order` rules where all parts are numbers.
/// Throws DbError 241 for what is no date, 242 for one out of range.
QDateTime parse(const QString& text, Order order);

QDateTime fromStored(const QString& stored);
/// The stored form, rounded as the type rounds (3.33 ms, minutes or days); DbError 242 out of range.
QString toStored(const QDateTime& date, const Type& type);
/// Days since 1 January 1900, as numbers become dates; DbError 242 beyond all dates.
QDateTime fromDays(double days);
QDateTime plusDays(const QDateTime& date, double days); ///< likewise
double toDays(const QDateTime& date);

/// The text of CONVERT with a style; throws notSupported for a style it does not know.
QString format(const QDateTime& date, const Type& type, int style);
/// The order of numbers that a style asks for when a text is converted; `standard` where it does not say.
Order orderOfStyle(int style, Order standard);

} // namespace embedded::dateText
