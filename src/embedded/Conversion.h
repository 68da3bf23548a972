#pragma once

#include "embedded/DateText.h"
#include "embedded/Sqlite.h"

namespace embedded {

/// Converts values between the server's types.
struct Conversion {
    Type from;
    Type to;
    int style = 0;
    /// Into a column a text that is too long is error 8152; in CAST and variables it is cut.
    bool intoColumn = false;
    dateText::Order dateOrder = dateText::Order::MonthDayYear;

    /// Throws DbError 245, 8114, 220, 8115, 241, 242, 8152 as the server does.
    Value operator()(const Value& value) const;

private:
    Value toInteger(const Value& value) const;
    Value toDecimal(const Value& value) const;
    Value toFloat(const Value& value) const;
    Value toText(const Value& value) const;
    Value toDate(const Value& value) const;
    double number(const Value& value) const;
    QString written(const Value& value) const;
    [[noreturn]] void fail(const Value& value) const;
};

struct Range {
    double low;
    double high;
};
/// Of the values of an integer type.
Range rangeOf(Type::Kind kind);
QChar ofCodePage1252(uchar code);
/// Letters that code page 1252 lacks become question marks.
QString inCodePage1252(const QString& text);
/// The value as a record set shows it; `value` must be of the type.
QString shown(const Value& value, const Type& type);
/// A number with the given places, rounded half away from zero.
double roundTo(double number, int places);

} // namespace embedded
