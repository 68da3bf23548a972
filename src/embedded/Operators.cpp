#include "embedded/Conversion.h"
#include "embedded/Errors.h"
#include "embedded/FunctionTable.h"

#include <cmath>

namespace embedded {

namespace {

double realOf(const Value& value) {
    if (const auto* integer = std::get_if<qint64>(&value)) return double(*integer);
    return std::get<double>(value);
}

DbError divisionByZero() {
    return DbError(8134, "Divide by zero error encountered.");
}

/// a / b in the result's type: integers and decimals drop what lies beyond their last place.
Value divide(const Value& a, const Value& b, const Type& type) {
    if (realOf(b) == 0) throw divisionByZero();
    if (type.isInteger()) return std::get<qint64>(a) / std::get<qint64>(b);
    const double quotient = realOf(a) / realOf(b);
    if (type.kind == Type::Money) return roundTo(quotient, 4);
    if (type.kind != Type::Decimal) return quotient;
    const long double scaled = static_cast<long double>(realOf(a)) / realOf(b) * std::pow(10.0L, type.scale);
    const long double nearest = std::round(scaled);
    // A quotient that binary only just misses is the whole number it stands for.
    const bool whole = std::fabs(scaled - nearest) < 1e-6L;
    return double((whole ? nearest : std::trunc(scaled)) / std::pow(10.0L, type.scale));
}

Value modulo(const Value& a, const Value& b, const Type& type) {
    if (realOf(b) == 0) throw divisionByZero();
    if (type.isInteger()) return std::get<qint64>(a) % std::get<qint64>(b);
    return roundTo(std::fmod(realOf(a), realOf(b)), type.scale);
}

Value inRange(const Value& value, const Type& type) {
    return Conversion{Type::of(Type::BigInt), type}(value);
}

} // namespace

void addOperators(Session& session) {
    SqliteFile& file = session.file;
    Session* state = &session;
    // ts_convert(value, from, to, style, intoColumn)
    file.addFunction("ts_convert", 5, true, [state](const Arguments& a) -> Value {
        if (a.isNull(0)) return {};
        return Conversion{Type::unpacked(a.integer(1)), Type::unpacked(a.integer(2)), int(a.integer(3)),
                          a.integer(4) != 0, state->dateOrder}(a.value(0));
    });
    file.addFunction("ts_notnull", 3, true, [](const Arguments& a) -> Value {
        if (a.isNull(0))
            throw serverError(515, "Cannot insert the value NULL into column '%1', table '%2'.", a.text(1),
                              a.text(2));
        return a.value(0);
    });
    const auto addArithmetic = [&file](const QString& name,
                                       Value (*function)(const Value&, const Value&, const Type&)) {
        file.addFunction(name, 3, true, [function](const Arguments& a) -> Value {
            if (a.isNull(0) || a.isNull(1)) return {};
            return function(a.value(0), a.value(1), Type::unpacked(a.integer(2)));
        });
    };
    addArithmetic("ts_div", divide);
    addArithmetic("ts_mod", modulo);
    // Integer results: error 8115 outside the type's range.
    file.addFunction("ts_range", 2, true, [](const Arguments& a) -> Value {
        if (a.isNull(0)) return {};
        return inRange(a.value(0), Type::unpacked(a.integer(1)));
    });
    file.addFunction("ts_places", 2, true, [](const Arguments& a) -> Value {
        if (a.isNull(0)) return {};
        return roundTo(a.real(0), int(a.integer(1)));
    });
    // A variable as it is now, while the same statement assigns it.
    file.addFunction("ts_variable", 1, false,
                     [state](const Arguments& a) { return state->valueOf(a.text(0)); });
    file.addFunction("ts_days", 3, true, [](const Arguments& a) -> Value {
        if (a.isNull(0) || a.isNull(1)) return {};
        const double days = a.real(1);
        const QDateTime date =
            dateText::fromStored(a.text(0)).addMSecs(qint64(std::llround(days * 86400000.0)));
        return dateText::toStored(date, Type::unpacked(a.integer(2)));
    });
}

} // namespace embedded
