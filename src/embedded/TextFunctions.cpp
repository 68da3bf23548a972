#include "embedded/Collation.h"
#include "embedded/Conversion.h"
#include "embedded/Errors.h"
#include "embedded/FunctionTable.h"
#include "embedded/LikePattern.h"

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

QString trimmedRight(const QString& text) {
    qsizetype size = text.size();
    while (size > 0 && text[size - 1] == u' ') --size;
    return text.left(size);
}

QString trimmedLeft(const QString& text) {
    qsizetype start = 0;
    while (start < text.size() && text[start] == u' ') ++start;
    return text.mid(start);
}

qsizetype length(const Arguments& arguments, int index, const char* function) {
    const qint64 value = arguments.integer(index);
    if (value < 0)
        throw DbError(537, QString("Invalid length parameter passed to the %1 function.").arg(function));
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

Value stuff(const Arguments& a) {
    const QString text = a.text(0);
    const qint64 start = a.integer(1);
    const qint64 count = a.integer(2);
    if (start < 1 || start > text.size() || count < 0) return {};
    return QString(text).replace(qsizetype(start) - 1, qsizetype(count), a.text(3));
}

/// The number right-aligned in `length` places, asterisks when it does not fit.
Value str(const Arguments& a) {
    const int width = a.count() > 1 ? int(a.integer(1)) : 10;
    const int places = a.count() > 2 ? int(a.integer(2)) : 0;
    if (width < 1) return {};
    QString text = QString::number(roundTo(a.real(0), places), 'f', places);
    if (text.size() > width) {
        const qsizetype point = text.indexOf(u'.');
        if (point < 0 || point > width) return QString(width, u'*');
        const int fitting = std::max(0, width - int(point) - 1);
        text = QString::number(roundTo(a.real(0), fitting), 'f', fitting);
    }
    return text.rightJustified(width, u' ');
}

Value quoteName(const Arguments& a) {
    const QString text = a.text(0);
    if (text.size() > 128) return {};
    const QString quote = a.count() > 1 ? a.text(1) : "[";
    if (quote == "[" || quote == "]") return '[' + QString(text).replace(u']', "]]") + ']';
    if (quote == "'" || quote == "\"") return quote + QString(text).replace(quote, quote + quote) + quote;
    return {};
}

Value replicate(const Arguments& a) {
    const qint64 times = a.integer(1);
    if (times < 0) return {};
    return a.text(0).repeated(qsizetype(std::min<qint64>(times, 8000)));
}

Value patternIndex(const Arguments& a) {
    const QString pattern = a.text(0);
    const QString text = a.text(1);
    const bool anchored = !pattern.startsWith(u'%');
    const QString rest = anchored ? pattern : pattern.mid(1);
    for (qsizetype at = 0; at <= text.size(); ++at) {
        if (matchesLike(QStringView(text).mid(at), rest)) return qint64(at + 1);
        if (anchored) break;
    }
    return qint64(0);
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
    if (code < 0 || code > 255) return {};
    // Where the code page leaves Latin-1.
    static const QString page = QString::fromUtf8("€?‚ƒ„…†‡ˆ‰Š‹Œ?Ž??‘’“”•–—˜™š›œ?žŸ");
    if (code >= 0x80 && code < 0xa0) return QString(page[qsizetype(code) - 0x80]);
    return QString(QChar(char16_t(code)));
}

} // namespace

void addTextFunctions(FunctionTable& table) {
    table.add("len", {"t", always(integerType),
                      [](const Arguments& a) { return qint64(trimmedRight(a.text(0)).size()); }});
    table.add("ltrim", {"t", likeFirstText, [](const Arguments& a) { return trimmedLeft(a.text(0)); }});
    table.add("rtrim", {"t", likeFirstText, [](const Arguments& a) { return trimmedRight(a.text(0)); }});
    table.add("upper", {"t", likeFirstText, [](const Arguments& a) { return a.text(0).toUpper(); }});
    table.add("lower", {"t", likeFirstText, [](const Arguments& a) { return a.text(0).toLower(); }});
    table.add("substring", {"tii", likeFirstText, substring});
    table.add("left",
              {"ti", likeFirstText, [](const Arguments& a) { return a.text(0).left(length(a, 1, "LEFT")); }});
    table.add("right", {"ti", likeFirstText,
                        [](const Arguments& a) { return a.text(0).right(length(a, 1, "RIGHT")); }});
    table.add("replace", {"ttt", longText, replace});
    table.add("charindex", {"tt[i", always(integerType), charIndex});
    table.add("patindex", {"tt", always(integerType), patternIndex});
    table.add("reverse", {"t", likeFirstText, [](const Arguments& a) {
                              QString text = a.text(0);
                              std::reverse(text.begin(), text.end());
                              return text;
                          }});
    table.add("replicate", {"ti", longText, replicate});
    table.add("space", {"i", always(Type::text(8000, false)), [](const Arguments& a) -> Value {
                            if (a.integer(0) < 0) return {};
                            return QString(qsizetype(std::min<qint64>(a.integer(0), 8000)), u' ');
                        }});
    table.add("stuff", {"tiit", longText, stuff});
    table.add("str", {"f[ii", always(Type::text(10, false)), str});
    table.add("quotename", {"t[t", always(Type::text(258, true)), quoteName});
    table.add("ascii", {"t", always(integerType), [](const Arguments& a) -> Value {
                            if (a.text(0).isEmpty()) return {};
                            return qint64(uchar(inCodePage1252(a.text(0).left(1)).toLatin1().at(0)));
                        }});
    table.add("char", {"i", always(Type::text(1, false)), charOf});
    table.add("nchar", {"i", always(Type::text(1, true)),
                        [](const Arguments& a) { return QString(QChar(char16_t(a.integer(0)))); }});
    table.add("unicode", {"t", always(integerType), [](const Arguments& a) -> Value {
                              if (a.text(0).isEmpty()) return {};
                              return qint64(a.text(0)[0].unicode());
                          }});
    table.add("like",
              {"tt[t", always(integerType), [](const Arguments& a) {
                   const QString escape = a.count() > 2 ? a.text(2) : QString();
                   if (a.count() > 2 && escape.size() != 1)
                       throw DbError(506, "A LIKE predicate has an invalid escape character.");
                   return qint64(matchesLike(a.text(0), a.text(1), escape.isEmpty() ? QChar() : escape[0]));
               }});
}

} // namespace embedded
