#pragma once

#include "db/Connection.h"
#include "db/ServerText.h"

#include <QHash>
#include <QSet>
#include <QStringList>
#include <functional>

/// A list of telephone numbers in a table of the server. Every change is written at once; two numbers
/// that differ in letter case only are the same. All functions throw DbError.
class NumberTable {
public:
    /// What a list that was brought in had too much of.
    struct LeftOut {
        int tooLong = 0;
        int letters = 0;
        int foreignSigns = 0; ///< signs that the column's code page lacks
        int duplicates = 0;

        int total() const { return tooLong + letters + foreignSigns + duplicates; }
        /// "3 are longer than 20 characters, 1 is a duplicate"; empty when nothing was left out.
        QString text(int maxLength) const;
    };
    struct Fitting {
        QStringList numbers;
        LeftOut leftOut;
    };
    /// Called now and then while many numbers are written.
    using Progress = std::function<void(int done, int total)>;

    explicit NumberTable(int maxLength) : m_maxLength(maxLength) {}
    NumberTable(const NumberTable&) = delete;
    NumberTable& operator=(const NumberTable&) = delete;
    virtual ~NumberTable() = default;

    int maxLength() const { return m_maxLength; }
    /// Those that were there before in their order as texts, then those added in the order of adding.
    QStringList numbers();
    /// The keys of those numbers of a list that the table holds.
    QSet<QString> keysAmong(const QStringList& numbers);
    /// Why a number cannot be entered, in words for the user; empty when it can. Does not look for
    /// duplicates.
    QString problem(const QString& number) const;
    /// Adds numbers without a problem: all of them or, after a failure, none.
    virtual void add(const QStringList& numbers);
    virtual void clear();
    /// All of them or, after a failure, none.
    virtual void removeAll(const QStringList& numbers);
    /// The numbers that fit the table, without duplicates.
    Fitting fitting(const QStringList& numbers) const;
    /// Replaces the list by fitting numbers: all of them, or, after a failure, the list is as it was.
    virtual void replace(const QStringList& numbers, const Progress& progress);

protected:
    virtual Connection& connection() = 0;
    virtual Sql selectNumbers() const = 0;
    virtual Sql deleteAll() const = 0;
    /// `condition` is "= N'…'" or "IN (…)", of the number's column.
    virtual Sql selectThese(const Sql& condition) const = 0;
    virtual Sql deleteThese(const Sql& condition) const = 0;
    virtual Sql insertInto() const = 0;                  ///< "INSERT INTO … (…) VALUES "
    virtual Sql values(const QString& number) const = 0; ///< "(…)"

private:
    void insert(const QStringList& numbers, const Progress& progress);

    int m_maxLength;
    QHash<QString, int> m_places; ///< in which the numbers were given, from 1 on, by key
    int m_lastPlace = 0;
};

/// Letters are no part of a telephone number; a list of an older version may hold some all the same.
bool holdsLetters(const QString& number);

/// What numbers are compared by.
inline QString numberKey(const QString& number) {
    return serverKey(number.trimmed());
}
