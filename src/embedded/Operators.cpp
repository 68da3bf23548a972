#include "embedded/Conversion.h"
#include "embedded/Errors.h"
#include "embedded/FunctionTable.h"

#include <cmath>
#include <limits>

namespace embedded {

namespace {

DbError divisionByZero() {
    return DbError(8134, "Divide by zero error encountered.");
}

/// The smallest integer has no positive counterpart, and dividing it by -1 ends the process.
qint64 negated(qint64 number) {
    if (number == std::numeric_limits<qint64>::min())
        throw DbError(8115, "Arithmetic overflow error converting expression to data type bigint.");
    return -number;
}

/// a / b in the result's type: integers and decimals drop what lies beyond their last place.
Value divide(const Value& a, const Value& b, const Type& type) {
    if (asReal(b) == 0) throw divisionByZero();
    if (type.isInteger()) {
        const qint64 divisor = std::get<qint64>(b);
        return divisor == -1 ? negated(std::get<qint64>(a)) : std::get<qint64>(a) / divisor;
    }
    const double quotient = asReal(a) / asReal(b);
    if (type.kind == Type::Money) return roundTo(quotient, 4);
    if (type.kind != Type::Decimal) return quotient;
    const long double scaled = static_cast<long double>(asReal(a)) / asReal(b) * std::pow(10.0L, type.scale);
    const long double nearest = std::round(scaled);
    // A quotient that binary only just misses is the whole number it stands for.
    const bool whole = std::fabs(scaled - nearest) < 1e-6L;
    return double((whole ? nearest : std::trunc(scaled)) / std::pow(10.0L, type.scale));
}

Value modulo(const Value& a, const Value& b, const Type& type) {
    if (asReal(b) == 0) throw divisionByZero();
    if (type.isInteger()) {
        const qint64 divisor = std::get<qint64>(b);
        return divisor == -1 ? 0 : std::get<qint64>(a) % divisor;
    }
    return roundTo(std::fmod(asReal(a), asReal(b)), type.scale);
}

Type likeFirstNumber(const QList<Typed>& arguments) {
    const Type& first = arguments[0].type;
    return first.isNumber() && first.kind != Type::Bit ? first : Type::of(Type::Float);
}

Value absolute(const Value& number) {
    const auto* integer = std::get_if<qint64>(&number);
    if (!integer) return std::fabs(asReal(number));
    return *integer < 0 ? negated(*integer) : *integer;
}

Value rounded(const Value& number, int places) {
    const bool isInteger = std::holds_alternative<qint64>(number);
    if (isInteger && places >= 0) return number;
    const double result = roundTo(asReal(number), places);
    return isInteger ? Conversion{Type::of(Type::Float), Type::of(Type::BigInt)}(result) : Value(result);
}

} // namespace

void addNumberFunctions(FunctionTable& table) {
    table.add("abs", {"n", likeFirstNumber, [](const Arguments& a) { return absolute(a.value(0)); }});
    table.add("round", {"ni", likeFirstNumber,
                        [](const Arguments& a) { return rounded(a.value(0), int(a.integer(1))); }});
}

void addOperators(Session& session) {
    SqliteFile& file = session.file;
    const auto add = [&file](const QString& name, int arguments, NativeFunction native) {
        file.addFunction(name, arguments, true, unlessNull(std::move(native)));
    };
    // ts_convert(value, from, to, style, intoColumn)
    add("ts_convert", 5, [&session](const Arguments& a) {
        return Conversion{Type::unpacked(a.integer(1)), Type::unpacked(a.integer(2)), int(a.integer(3)),
                          a.integer(4) != 0, session.dateOrder}(a.value(0));
    });
    add("ts_div", 3,
        [](const Arguments& a) { return divide(a.value(0), a.value(1), Type::unpacked(a.integer(2))); });
    add("ts_mod", 3,
        [](const Arguments& a) { return modulo(a.value(0), a.value(1), Type::unpacked(a.integer(2))); });
    // Integer results: error 8115 outside the type's range.
    add("ts_range", 2, [](const Arguments& a) {
        return Conversion{Type::of(Type::BigInt), Type::unpacked(a.integer(1))}(a.value(0));
    });
    add("ts_places", 2, [](const Arguments& a) { return roundTo(a.real(0), int(a.integer(1))); });
    add("ts_days", 3, [](const Arguments& a) {
        const QDateTime date = dateText::plusDays(dateText::fromStored(a.text(0)), a.real(1));
        return dateText::toStored(date, Type::unpacked(a.integer(2)));
    });
    file.addFunction("ts_notnull", 3, true, [](const Arguments& a) -> Value {
        if (a.isNull(0))
            throw serverError(515, "Cannot insert the value NULL into column '%1', table '%2'.", a.text(1),
                              a.text(2));
        return a.value(0);
    });
    // A variable as it is now, while the same statement assigns it.
    file.addFunction("ts_variable", 1, false,
                     [&session](const Arguments& a) { return session.valueOf(a.text(0)); });
}

} // namespace embedded
