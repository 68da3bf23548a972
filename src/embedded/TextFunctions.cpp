#include "embedded/Collation.h"
#include "embedded/Conversion.h"
#include "embedded/Errors.h"
#include "embedded/FunctionTable.h"

namespace embedded {

namespace {

const Type integerType = Type::of(Type::Int);

Type longText(const QList<Typed>& arguments) {
    const Type first = likeFirstText(arguments);
    return Type::text(first.length == Type::Max ? Type::Max
                      : first.isUnicode()       ? 4000
                                                : 8000,
                      first.isUnicode());
}

QString trimmedLeft(const QString& text) {
    qsizetype start = 0;
    while (start < text.size() && text[start] == u' ') ++start;
    return text.mid(start);
}

qsizetype length(const Arguments& arguments, int index, const char* function) {
    const qint64 value = arguments.integer(index);
    if (value < 0) throw serverError(537, "Invalid length parameter passed to the %1 function.", function);
    return qsizetype(value);
}

Value substring(const Arguments& a) {
    const qsizetype count = length(a, 2, "SUBSTRING");
    const qsizetype start = qsizetype(a.integer(1)) - 1;
    // A start before the text uses up some of the length.
    const qsizetype end = start + count;
    return end <= 0 ? QString("")
                    : a.text(0).mid(std::max<qsizetype>(0, start), end - std::max<qsizetype>(0, start));
}

Value charIndex(const Arguments& a) {
    const QString part = a.text(0);
    if (part.isEmpty()) return qint64(0);
    const qint64 from = a.count() > 2 ? std::max<qint64>(1, a.integer(2)) : 1;
    return qint64(collation::indexOf(a.text(1), part, qsizetype(from) - 1) + 1);
}

Value replace(const Arguments& a) {
    const QString part = a.text(1);
    return part.isEmpty() ? a.text(0) : a.text(0).replace(part, a.text(2), Qt::CaseInsensitive);
}

Value charOf(const Arguments& a) {
    const qint64 code = a.integer(0);
    return code < 0 || code > 255 ? Value() : Value(QString(ofCodePage1252(uchar(code))));
}

} // namespace

void addTextFunctions(FunctionTable& table) {
    table.add("len", {"t", always(integerType),
                      [](const Arguments& a) { return qint64(collation::trimmed(a.text(0)).size()); }});
    table.add("ltrim", {"t", likeFirstText, [](const Arguments& a) { return trimmedLeft(a.text(0)); }});
    table.add("rtrim", {"t", likeFirstText,
                        [](const Arguments& a) { return collation::trimmed(a.text(0)).toString(); }});
    table.add("upper", {"t", likeFirstText, [](const Arguments& a) { return a.text(0).toUpper(); }});
    table.add("lower", {"t", likeFirstText, [](const Arguments& a) { return a.text(0).toLower(); }});
    table.add("substring", {"tii", likeFirstText, substring});
    table.add("left",
              {"ti", likeFirstText, [](const Arguments& a) { return a.text(0).left(length(a, 1, "LEFT")); }});
    table.add("right", {"ti", likeFirstText,
                        [](const Arguments& a) { return a.text(0).right(length(a, 1, "RIGHT")); }});
    table.add("replace", {"ttt", longText, replace});
    table.add("charindex", {"tt[i", always(integerType), charIndex});
    table.add("char", {"i", always(Type::text(1, false)), charOf});
    table.add("like", {"tt[t", always(integerType), [](const Arguments& a) {
                           const QString escape = a.count() > 2 ? a.text(2) : QString();
                           if (a.count() > 2 && escape.size() != 1)
                               throw DbError(506, "A LIKE predicate has an invalid escape character.");
                           return qint64(collation::matchesLike(a.text(0), a.text(1),
                                                                escape.isEmpty() ? QChar() : escape[0]));
                       }});
}

} // namespace embedded
