#include "embedded/Conversion.h"

#include "embedded/Collation.h"
#include "embedded/Errors.h"

#include <cmath>
#include <limits>

namespace embedded {

namespace {

DbError overflow(const Type& to) {
    return serverError(8115, "Arithmetic overflow error converting expression to data type %1.",
                       to.toString());
}

QString blankPadded(const QString& text, const Type& type) {
    const bool fixed = type.kind == Type::Char || type.kind == Type::NChar;
    return fixed && type.length > 0 ? text.leftJustified(type.length, u' ') : text;
}

/// The server's text of a float: six significant digits.
QString floatText(double number) {
    QString text = QString::number(number, 'g', 6);
    if (text == "-0") text = "0";
    // 1e+20 is written 1e+020
    const qsizetype exponent = text.indexOf(u'e');
    if (exponent >= 0) text = text.left(exponent + 2) + text.mid(exponent + 2).rightJustified(3, u'0');
    return text;
}

/// Reads a number as the server does, blanks around it allowed.
bool parseNumber(const QString& text, double& number) {
    const QString trimmed = text.trimmed();
    if (trimmed.isEmpty()) return false;
    for (const QChar c : trimmed)
        if (!c.isDigit() && !QString("+-.eE").contains(c)) return false;
    bool valid = false;
    number = trimmed.toDouble(&valid);
    if (!valid && (trimmed.endsWith(u'.') || trimmed.contains(u'.')))
        number = QString(trimmed).append(u'0').toDouble(&valid);
    return valid;
}

/// What the code page has in the places 0x80 to 0x9f, where it leaves Latin-1.
const QString& page1252() {
    static const QString page =
        QString::fromUtf8("€\u0081‚ƒ„…†‡ˆ‰Š‹Œ\u008dŽ\u008f\u0090‘’“”•–—˜™š›œ\u009džŸ");
    return page;
}

} // namespace

Range rangeOf(Type::Kind kind) {
    switch (kind) {
    case Type::Bit:
        return {0, 1};
    case Type::TinyInt:
        return {0, 255};
    case Type::SmallInt:
        return {-32768, 32767};
    case Type::Int:
        return {-2147483648.0, 2147483647.0};
    default:
        return {-9223372036854775808.0, 9223372036854774784.0};
    }
}

QChar ofCodePage1252(uchar code) {
    return code < 0x80 || code >= 0xa0 ? QChar(char16_t(code)) : page1252()[code - 0x80];
}

QString inCodePage1252(const QString& text) {
    QString result = text;
    for (QChar& c : result) {
        const ushort code = c.unicode();
        const bool known = code < 0x80 || (code >= 0xa0 && code < 0x100) || page1252().contains(c);
        if (!known) c = u'?';
    }
    return result;
}

double roundTo(double number, int places) {
    const long double factor = std::pow(10.0L, places);
    const long double scaled = static_cast<long double>(number) * factor;
    // A half that binary cannot hold, as in 1.005, is still a half to whoever wrote it.
    const long double nudge = std::fabs(scaled) * 1e-15L;
    const long double rounded =
        scaled < 0 ? -std::floor(-scaled + 0.5L + nudge) : std::floor(scaled + 0.5L + nudge);
    return double(rounded / factor);
}

void Conversion::fail(const Value& value) const {
    const QString text = std::holds_alternative<QString>(value) ? std::get<QString>(value) : written(value);
    if (to.kind == Type::Decimal || to.kind == Type::Float || to.kind == Type::Real)
        throw serverError(8114, "Error converting data type %1 to %2.", from.toString().section(u'(', 0, 0),
                          to.toString().section(u'(', 0, 0));
    if (to.kind == Type::Money)
        throw DbError(235, "Cannot convert a char value to money. The char value has incorrect syntax.");
    throw serverError(245, "Conversion failed when converting the %1 value '%2' to data type %3.",
                      from.toString().section(u'(', 0, 0), text, to.toString().section(u'(', 0, 0));
}

Value Conversion::operator()(const Value& value) const {
    if (isNull(value) || to.kind == Type::Null) return value;
    if (to.isInteger()) return toInteger(value);
    if (to.kind == Type::Decimal || to.kind == Type::Money) return toDecimal(value);
    if (to.isNumber()) return toFloat(value);
    if (to.isText()) return toText(value);
    if (to.isDate()) return toDate(value);
    throw notSupported("binary values");
}

double Conversion::number(const Value& value) const {
    const auto* text = std::get_if<QString>(&value);
    if (!text) return asReal(value);
    if (from.isDate()) return dateText::toDays(dateText::fromStored(*text));
    QString digits = *text;
    if (to.kind == Type::Money) digits.remove(u',').remove(u'$').remove(QChar(0xa3));
    double parsed = 0;
    if (parseNumber(digits, parsed)) return parsed;
    if (digits.trimmed().isEmpty() && to.kind != Type::Decimal) return 0;
    fail(value);
}

Value Conversion::toInteger(const Value& value) const {
    if (const auto* integer = std::get_if<qint64>(&value)) {
        if (to.kind == Type::Bit) return qint64(*integer != 0);
        if (to.kind == Type::BigInt) return value;
    }
    if (const auto* text = std::get_if<QString>(&value); text && !from.isDate()) {
        const QString word = text->trimmed();
        if (to.kind == Type::Bit) {
            if (word.compare("true", Qt::CaseInsensitive) == 0) return qint64(1);
            if (word.compare("false", Qt::CaseInsensitive) == 0) return qint64(0);
        }
        bool whole = word.isEmpty();
        const qint64 parsed = word.isEmpty() ? 0 : word.toLongLong(&whole);
        if (!whole) fail(value); // '1.5' is no integer
        if (to.kind == Type::BigInt) return parsed;
        if (to.kind == Type::Bit) return qint64(parsed != 0);
    }
    const double real = number(value);
    if (to.kind == Type::Bit) return qint64(real != 0);
    // Dates round to the nearest day, numbers lose their fraction.
    const double whole = from.isDate() ? std::floor(real + 0.5) : std::trunc(real);
    const Range range = rangeOf(to.kind);
    if (whole < range.low || whole > range.high) {
        if (to.kind != Type::TinyInt && to.kind != Type::SmallInt) throw overflow(to);
        throw serverError(220, "Arithmetic overflow error for data type %1.", to.toString());
    }
    return qint64(whole);
}

Value Conversion::toDecimal(const Value& value) const {
    const double real = number(value);
    if (to.kind == Type::Money) {
        if (std::fabs(real) > 922337203685477.0) throw overflow(to);
        return roundTo(real, 4);
    }
    const double limit = std::pow(10.0, to.precision - to.scale);
    const double rounded = roundTo(real, to.scale);
    if (std::fabs(rounded) >= limit) throw overflow(to);
    if (std::fabs(rounded) * std::pow(10.0, to.scale) > 9007199254740992.0 && rounded != std::floor(rounded))
        throw notSupported("a decimal with more than 15 digits");
    return rounded;
}

Value Conversion::toFloat(const Value& value) const {
    const double real = number(value);
    return to.kind == Type::Real ? double(float(real)) : real;
}

QString Conversion::written(const Value& value) const {
    if (const auto* text = std::get_if<QString>(&value)) {
        if (from.isDate()) return dateText::format(dateText::fromStored(*text), from, style);
        return *text;
    }
    if (const auto* integer = std::get_if<qint64>(&value))
        if (from.kind != Type::Money && from.kind != Type::Decimal) return QString::number(*integer);
    const double real = asReal(value);
    if (from.kind == Type::Money) return QString::number(roundTo(real, 2), 'f', 2);
    if (from.kind == Type::Decimal) return QString::number(real, 'f', from.scale);
    return floatText(real);
}

Value Conversion::toText(const Value& value) const {
    QString text = written(value);
    if (!to.isUnicode()) text = inCodePage1252(text);
    if (to.length == Type::Max || text.size() <= to.length) return blankPadded(text, to);
    if (intoColumn) {
        if (collation::trimmed(text).size() > to.length)
            throw DbError(DbError::TextTooLong, "String or binary data would be truncated.");
    } else if (from.isInteger()) {
        return QString("*");
    } else if (from.isNumber()) {
        throw serverError(8115, "Arithmetic overflow error converting %1 to data type %2.", from.toString(),
                          to.toString());
    }
    return text.left(to.length);
}

Value Conversion::toDate(const Value& value) const {
    if (const auto* text = std::get_if<QString>(&value)) {
        if (from == to) return value;
        if (from.isDate()) return dateText::toStored(dateText::fromStored(*text), to);
        return dateText::toStored(dateText::parse(*text, dateText::orderOfStyle(style, dateOrder)), to);
    }
    return dateText::toStored(dateText::fromDays(number(value)), to);
}

QString shown(const Value& value, const Type& type) {
    if (isNull(value)) return {};
    if (const auto* text = std::get_if<QString>(&value)) {
        if (type.kind == Type::Date) return text->left(10);
        if (type.kind == Type::SmallDateTime) return text->left(19);
        return text->isNull() ? QString("") : *text;
    }
    const double real = asReal(value);
    if (type.kind == Type::Decimal || type.kind == Type::Money) {
        const QString text = QString::number(roundTo(real, type.scale), 'f', type.scale);
        return text.startsWith(u'-') && real > -0.5 * std::pow(10.0, -type.scale) ? text.mid(1) : text;
    }
    if (type.kind == Type::Real) return QString::number(real, 'g', 7);
    const auto* integer = std::get_if<qint64>(&value);
    return integer && type.kind != Type::Float ? QString::number(*integer) : QString::number(real, 'g', 15);
}

} // namespace embedded
