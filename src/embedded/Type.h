#pragma once

#include <QStringList>

namespace embedded {

/// A column, variable or expression type. Dates are stored as "yyyy-MM-dd HH:mm:ss.zzz" whatever their
/// kind; decimals and money as doubles rounded to their scale.
struct Type {
    enum Kind {
        Null, ///< the type of a bare NULL: fits everything
        Bit,
        TinyInt,
        SmallInt,
        Int,
        BigInt,
        Decimal,
        Money,
        Real,
        Float,
        Char,
        VarChar,
        NChar,
        NVarChar,
        Date,
        SmallDateTime,
        DateTime,
        Binary,
    };
    static constexpr int Max = -1;

    Kind kind = Null;
    int length = 0;    ///< characters of a text (bytes of a binary); Max without limit
    int precision = 0; ///< of a decimal, and of an integer that is written out
    int scale = 0;     ///< decimal and money

    static Type of(Kind kind);
    static Type text(int length, bool unicode) { return {unicode ? NVarChar : VarChar, length, 0, 0}; }
    static Type decimal(int precision, int scale);
    /// From a written type, for example "varchar", {"50"}; throws notSupported for other types and
    /// DbError 1001 for a bad length.
    static Type parse(const QString& name, const QStringList& arguments);
    static Type parse(const QString& written); ///< from toString()
    QString toString() const;

    bool isInteger() const { return kind >= Bit && kind <= BigInt; }
    bool isExact() const { return kind >= Bit && kind <= Money; }
    bool isNumber() const { return kind >= Bit && kind <= Float; }
    bool isText() const { return kind >= Char && kind <= NVarChar; }
    bool isUnicode() const { return kind == NChar || kind == NVarChar; }
    bool isDate() const { return kind >= Date && kind <= DateTime; }
    bool operator==(const Type&) const = default;

    /// All of it in one number, to pass a type to a function inside SQLite, and back.
    qint64 packed() const;
    static Type unpacked(qint64 packed);

    /// Precision of an integer or decimal when it takes part in decimal arithmetic.
    int digits() const;
    /// The type that two operands of a comparison, CASE or UNION meet in.
    static Type common(const Type& a, const Type& b);
    int systemNumber() const;  ///< the number in syscolumns.xtype
    int storageLength() const; ///< bytes, as in syscolumns.length
};

} // namespace embedded
