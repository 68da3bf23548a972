#include "embedded/Conversion.h"
#include "embedded/FunctionTable.h"

#include <cmath>

namespace embedded {

namespace {

Type likeFirstNumber(const QList<Typed>& arguments) {
    const Type& first = arguments[0].type;
    return first.isNumber() && first.kind != Type::Bit ? first : Type::of(Type::Float);
}

Value same(const Arguments& a, double result) {
    if (std::holds_alternative<qint64>(a.value(0))) return qint64(result);
    return result;
}

} // namespace

void addNumberFunctions(FunctionTable& table) {
    table.add("abs",
              {"n", likeFirstNumber, [](const Arguments& a) { return same(a, std::fabs(a.real(0))); }});
    table.add("round", {"ni", likeFirstNumber,
                        [](const Arguments& a) { return same(a, roundTo(a.real(0), int(a.integer(1)))); }});
}

} // namespace embedded
