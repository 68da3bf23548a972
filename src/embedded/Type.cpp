#include "embedded/Type.h"

#include "embedded/Errors.h"

#include <QHash>
#include <QRegularExpression>
#include <algorithm>

namespace embedded {

namespace {

struct Known {
    const char* name;
    Type::Kind kind;
    int systemNumber;
    int bytes;
};

/// The first entry of a kind gives its written name.
constexpr Known knownTypes[] = {
    {"bit", Type::Bit, 104, 1},          {"tinyint", Type::TinyInt, 48, 1},
    {"smallint", Type::SmallInt, 52, 2}, {"int", Type::Int, 56, 4},
    {"integer", Type::Int, 56, 4},       {"bigint", Type::BigInt, 127, 8},
    {"decimal", Type::Decimal, 106, 9},  {"numeric", Type::Decimal, 106, 9},
    {"dec", Type::Decimal, 106, 9},      {"money", Type::Money, 60, 8},
    {"smallmoney", Type::Money, 60, 8},  {"real", Type::Real, 59, 4},
    {"float", Type::Float, 62, 8},       {"char", Type::Char, 175, 0},
    {"varchar", Type::VarChar, 167, 0},  {"text", Type::VarChar, 167, 0},
    {"nchar", Type::NChar, 239, 0},      {"nvarchar", Type::NVarChar, 231, 0},
    {"sysname", Type::NVarChar, 231, 0}, {"ntext", Type::NVarChar, 231, 0},
    {"date", Type::Date, 40, 3},         {"smalldatetime", Type::SmallDateTime, 58, 4},
    {"datetime", Type::DateTime, 61, 8}, {"varbinary", Type::Binary, 165, 0},
    {"binary", Type::Binary, 165, 0},    {"image", Type::Binary, 165, 0},
};

const Known& known(Type::Kind kind) {
    return *std::find_if(std::begin(knownTypes), std::end(knownTypes),
                         [kind](const Known& entry) { return entry.kind == kind; });
}

int lengthOf(const QString& name, const QStringList& arguments) {
    if (name == "text" || name == "ntext" || name == "image") return Type::Max;
    if (name == "sysname") return 128;
    if (arguments.isEmpty()) return 1;
    if (arguments[0].compare("max", Qt::CaseInsensitive) == 0) return Type::Max;
    const int length = arguments[0].toInt();
    const int limit = name.startsWith(u'n') ? 4000 : 8000;
    if (length < 1 || length > limit)
        throw serverError(1001, "The size (%1) given to the type '%2' exceeds the maximum allowed (%3).",
                          arguments[0], name, limit);
    return length;
}

} // namespace

Type Type::of(Kind kind) {
    return {kind, 0, 0, kind == Money ? 4 : 0};
}

Type Type::decimal(int precision, int scale) {
    return {Decimal, 0, std::min(precision, 38), std::min(scale, 38)};
}

Type Type::parse(const QString& name, const QStringList& arguments) {
    const QString lower = name.toLower();
    const auto entry =
        std::find_if(std::begin(knownTypes), std::end(knownTypes),
                     [&lower](const Known& type) { return lower == QLatin1StringView(type.name); });
    if (entry == std::end(knownTypes)) throw notSupported("type " + name);
    Type type = of(entry->kind);
    if (type.kind == Decimal) {
        type = decimal(arguments.value(0, "18").toInt(), arguments.value(1, "0").toInt());
        if (type.precision < 1 || type.scale > type.precision)
            throw DbError(192, "The scale must be less than or equal to the precision.");
    } else if (type.kind == Float) {
        if (arguments.value(0, "53").toInt() <= 24) type.kind = Real;
    } else if (type.isText() || type.kind == Binary) {
        type.length = lengthOf(lower, arguments);
    } else if (!arguments.isEmpty()) {
        throw serverError(2716, "Cannot specify a column width on data type %1.", name);
    }
    return type;
}

Type Type::parse(const QString& written) {
    const qsizetype bracket = written.indexOf(u'(');
    if (bracket < 0) return parse(written, {});
    return parse(written.left(bracket), written.mid(bracket + 1).chopped(1).split(u','));
}

QString Type::toString() const {
    const QString name = kind == Null ? "null" : QString(known(kind).name);
    if (kind == Decimal) return QString("%1(%2,%3)").arg(name).arg(precision).arg(scale);
    if (isText() || kind == Binary)
        return QString("%1(%2)").arg(name, length == Max ? QString("max") : QString::number(length));
    return name;
}

qint64 Type::packed() const {
    return qint64(kind) | qint64(length + 1) << 8 | qint64(precision) << 32 | qint64(scale) << 40;
}

Type Type::unpacked(qint64 packed) {
    return {Kind(packed & 0xff), int(packed >> 8 & 0xffffff) - 1, int(packed >> 32 & 0xff),
            int(packed >> 40 & 0xff)};
}

int Type::digits() const {
    switch (kind) {
    case Bit:
        return 1;
    case TinyInt:
        return 3;
    case SmallInt:
        return 5;
    case Int:
        return precision > 0 ? precision : 10;
    case BigInt:
    case Money:
        return 19;
    case Decimal:
        return precision;
    default:
        return 38;
    }
}

Type Type::common(const Type& a, const Type& b) {
    if (a.kind == Null) return b;
    if (b.kind == Null) return a;
    if (a.isText() && b.isText()) {
        Type type = a.kind >= b.kind ? a : b;
        if (a.isUnicode() != b.isUnicode())
            type.kind = NVarChar;
        else if (a.kind != b.kind)
            type.kind = type.isUnicode() ? NVarChar : VarChar;
        type.length = a.length == Max || b.length == Max ? Max : std::max(a.length, b.length);
        return type;
    }
    if (a.kind == Decimal || b.kind == Decimal) {
        if (a.isExact() && b.isExact() && !(a.kind == Money || b.kind == Money)) {
            const int scale = std::max(a.scale, b.scale);
            return decimal(std::max(a.digits() - a.scale, b.digits() - b.scale) + scale, scale);
        }
        // Next to money a decimal keeps at least money's four places.
        if (a.kind == Money || b.kind == Money) return decimal(38, std::max(a.scale, b.scale));
    }
    const auto rank = [](const Type& type) {
        if (type.kind == Binary) return -2;
        return type.isText() ? -1 : int(type.kind);
    };
    return rank(a) >= rank(b) ? a : b;
}

int Type::systemNumber() const {
    return kind == Null ? 0 : known(kind).systemNumber;
}

int Type::storageLength() const {
    if (length == Max) return Max;
    if (isText()) return isUnicode() ? length * 2 : length;
    return kind == Binary ? length : known(kind).bytes;
}

} // namespace embedded
