#include "db/RecordSet.h"

#include "db/DbError.h"

#include <limits>

bool Row::isNull(int column) const {
    return m_set->cell(m_index, column).isNull();
}
QString Row::text(int column) const {
    return m_set->cell(m_index, column).toString();
}
int Row::integer(int column) const {
    bool plain = false;
    const int digits = m_set->cell(m_index, column).toInt(&plain);
    if (plain) return digits;
    const double value = number(column);
    using Limits = std::numeric_limits<int>;
    return value >= Limits::min() && value <= Limits::max() ? int(value) : 0;
}
bool Row::flag(int column) const {
    return number(column) != 0;
}
double Row::number(int column) const {
    return m_set->cell(m_index, column).toDouble();
}

bool Row::isNull(const char* column) const {
    return isNull(m_set->column(column));
}
QString Row::text(const char* column) const {
    return text(m_set->column(column));
}
int Row::integer(const char* column) const {
    return integer(m_set->column(column));
}
bool Row::flag(const char* column) const {
    return flag(m_set->column(column));
}
double Row::number(const char* column) const {
    return number(m_set->column(column));
}

QDate Row::date(const char* column) const {
    return QDate::fromString(text(column).left(10), Qt::ISODate);
}

bool Row::operator==(const Row& other) const {
    const int columns = int(m_set->columns().size());
    if (columns != other.m_set->columns().size()) return false;
    for (int column = 0; column < columns; ++column)
        if (m_set->cell(m_index, column) != other.m_set->cell(other.m_index, column)
            || isNull(column) != other.isNull(column))
            return false;
    return true;
}

QStringView RecordSet::cell(qsizetype row, int column) const {
    if (column < 0 || column >= m_columns.size())
        throw DbError(DbError::InvalidColumn, QString("Invalid column number %1.").arg(column));
    const Cell& cell = m_cells.at(std::size_t(row * m_columns.size() + column));
    return cell.length == nullLength ? QStringView() : QStringView(m_text).sliced(cell.from, cell.length);
}

RecordSet RecordSet::arranged(const std::vector<qsizetype>& places) const {
    RecordSet set(m_columns);
    set.m_text.reserve(m_text.size());
    set.m_cells.reserve(m_cells.size());
    for (const qsizetype place : places)
        for (int column = 0; column < m_columns.size(); ++column) set.append(cell(place, column));
    return set;
}

int RecordSet::column(const char* name) const {
    const QLatin1StringView wanted(name);
    for (int i = 0; i < m_columns.size(); ++i)
        if (m_columns[i].compare(wanted, Qt::CaseInsensitive) == 0) return i;
    throw DbError(DbError::InvalidColumn, QString("Invalid column name '%1'.").arg(wanted));
}
