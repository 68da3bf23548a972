#include "numbers/NumberTable.h"

#include "db/ColumnText.h"

#include <QSet>
#include <algorithm>

namespace {

constexpr qsizetype RowsPerStatement = 500; // the server takes a thousand at most

/// Why the column cannot hold a number; empty when it can.
QString storingProblem(const QString& number, int maxLength) {
    return fittingProblem("telephone number", number, maxLength, CodePage::Latin1252);
}

Sql isOneOf(const QStringList& numbers) {
    QList<Sql> values;
    for (const QString& number : numbers) values << Sql::value(number);
    return values.size() == 1 ? sql("= {}", values.first()) : sql("IN ({})", Sql::join(values, sql(", ")));
}

} // namespace

bool holdsLetters(const QString& number) {
    return std::ranges::any_of(number, [](QChar sign) { return sign.isLetter(); });
}

QString NumberTable::LeftOut::text(int maxLength) const {
    QStringList reasons;
    const auto add = [&](int count, const QString& one, const QString& many) {
        if (count > 0) reasons << QString("%1 %2").arg(count).arg(count == 1 ? one : many);
    };
    const QString length = QString(" longer than %1 characters").arg(maxLength);
    add(tooLong, "is" + length, "are" + length);
    add(letters, "holds letters", "hold letters");
    add(foreignSigns, "holds signs that the database cannot store",
        "hold signs that the database cannot store");
    add(duplicates, "is a duplicate", "are duplicates");
    return reasons.join(", ");
}

QStringList NumberTable::numbers() {
    // The table keeps no order: those of this list come as they were given, behind the rest in their own.
    std::vector<std::pair<int, QString>> placed;
    for (const Row row : connection().query(selectNumbers()))
        if (!row.isNull(0)) placed.emplace_back(m_places.value(numberKey(row.text(0))), row.text(0));
    std::ranges::sort(placed);
    QStringList numbers;
    for (const auto& [place, number] : placed) numbers << number;
    return numbers;
}

QSet<QString> NumberTable::keysAmong(const QStringList& numbers) {
    QSet<QString> keys;
    for (qsizetype first = 0; first < numbers.size(); first += RowsPerStatement)
        for (const Row row : connection().query(selectThese(isOneOf(numbers.mid(first, RowsPerStatement)))))
            keys.insert(numberKey(row.text(0)));
    return keys;
}

QString NumberTable::problem(const QString& number) const {
    if (holdsLetters(number)) return "Letters cannot be part of a telephone number.";
    return storingProblem(number, m_maxLength);
}

void NumberTable::add(const QStringList& numbers) {
    Transaction transaction(connection());
    insert(numbers, [](int, int) {});
    transaction.commit();
}

void NumberTable::clear() {
    connection().execute(deleteAll());
}

void NumberTable::removeAll(const QStringList& numbers) {
    Transaction transaction(connection());
    for (qsizetype first = 0; first < numbers.size(); first += RowsPerStatement) {
        connection().execute(deleteThese(isOneOf(numbers.mid(first, RowsPerStatement))));
    }
    transaction.commit();
}

NumberTable::Fitting NumberTable::fitting(const QStringList& numbers) const {
    Fitting result;
    QSet<QString> known;
    for (const QString& number : numbers) {
        if (number.size() > m_maxLength) {
            ++result.leftOut.tooLong;
        } else if (!storingProblem(number, m_maxLength).isEmpty()) {
            ++result.leftOut.foreignSigns;
        } else if (known.contains(numberKey(number))) {
            ++result.leftOut.duplicates;
        } else {
            known.insert(numberKey(number));
            result.numbers << number;
        }
    }
    return result;
}

void NumberTable::replace(const QStringList& numbers, const Progress& progress) {
    Transaction transaction(connection());
    connection().execute(deleteAll());
    insert(numbers, progress);
    transaction.commit();
}

void NumberTable::insert(const QStringList& numbers, const Progress& progress) {
    const int total = int(numbers.size());
    for (const QString& number : numbers) m_places[numberKey(number)] = ++m_lastPlace;
    for (qsizetype first = 0; first < numbers.size(); first += RowsPerStatement) {
        progress(int(first), total);
        QList<Sql> rows;
        for (const QString& number : numbers.mid(first, RowsPerStatement)) rows << values(number);
        connection().execute(sql("{}{}", insertInto(), Sql::join(rows, sql(", "))));
    }
    progress(total, total);
}
