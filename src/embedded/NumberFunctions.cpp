#include "embedded/Conversion.h"
#include "embedded/Errors.h"
#include "embedded/FunctionTable.h"

#include <QRandomGenerator>
#include <cmath>

namespace embedded {

namespace {

const Type floatType = Type::of(Type::Float);

Type likeFirstNumber(const QList<Typed>& arguments) {
    const Type& first = arguments[0].type;
    return first.isNumber() && first.kind != Type::Bit ? first : floatType;
}

/// FLOOR and CEILING of a decimal have no places left.
Type wholeOfFirst(const QList<Typed>& arguments) {
    const Type type = likeFirstNumber(arguments);
    return type.kind == Type::Decimal ? Type::decimal(type.precision, 0) : type;
}

Value same(const Arguments& a, double result) {
    if (std::holds_alternative<qint64>(a.value(0))) return qint64(result);
    return result;
}

Value round(const Arguments& a) {
    const int places = int(a.integer(1));
    const double number = a.real(0);
    if (a.count() > 2 && a.integer(2) != 0) {
        const double factor = std::pow(10.0, places);
        return same(a, std::trunc(number * factor) / factor);
    }
    return same(a, roundTo(number, places));
}

Value checked(double result) {
    if (!std::isfinite(result)) throw DbError(3623, "An invalid floating point operation occurred.");
    return result;
}

Value isNumeric(const Arguments& a) {
    const Value value = a.value(0);
    const Type type = Type::unpacked(a.integer(1));
    if (isNull(value)) return qint64(0);
    if (type.isNumber()) return qint64(1);
    if (!type.isText()) return qint64(0);
    double number = 0;
    QString text = std::get<QString>(value).trimmed();
    if (text.startsWith(u'$') || text.startsWith(QChar(0xa3))) text.remove(0, 1);
    return qint64(parseNumber(text.remove(u','), number));
}

using Math = double (*)(double);

} // namespace

void addNumberFunctions(FunctionTable& table) {
    table.add("abs",
              {"n", likeFirstNumber, [](const Arguments& a) { return same(a, std::fabs(a.real(0))); }});
    table.add("round", {"ni[i", likeFirstNumber, round});
    table.add("floor",
              {"n", wholeOfFirst, [](const Arguments& a) { return same(a, std::floor(a.real(0))); }});
    table.add("ceiling",
              {"n", wholeOfFirst, [](const Arguments& a) { return same(a, std::ceil(a.real(0))); }});
    table.add("sign", {"n", likeFirstNumber, [](const Arguments& a) {
                           return same(a, a.real(0) > 0 ? 1 : a.real(0) < 0 ? -1 : 0);
                       }});
    table.add("power", {"nf", likeFirstNumber, [](const Arguments& a) {
                            return same(a, std::get<double>(checked(std::pow(a.real(0), a.real(1)))));
                        }});
    table.add("square", {"f", always(floatType), [](const Arguments& a) { return a.real(0) * a.real(0); }});
    const std::pair<const char*, Math> functions[] = {
        {"sqrt", std::sqrt}, {"exp", std::exp}, {"log", std::log}, {"log10", std::log10},
        {"sin", std::sin},   {"cos", std::cos}, {"tan", std::tan}};
    for (const auto& [name, function] : functions) {
        const Math math = function;
        table.add(name,
                  {"f", always(floatType), [math](const Arguments& a) { return checked(math(a.real(0))); }});
    }
    table.add("pi", {"", always(floatType), [](const Arguments&) { return 3.14159265358979312; }});
    table.add("rand",
              {"", always(floatType),
               [](const Arguments&) { return QRandomGenerator::global()->generateDouble(); }, false, false});
    table.add("isnumeric", {"y", always(Type::of(Type::Int)), isNumeric, true});
}

} // namespace embedded
