#pragma once

#include <QDate>
#include <QStringList>
#include <vector>

class RecordSet;

/// One row of a record set; valid as long as its record set. Column names match without regard to
/// case; a name that the record set lacks throws DbError (207).
class Row {
public:
    Row(const RecordSet& set, qsizetype index) : m_set(&set), m_index(index) {}

    bool isNull(int column) const;
    QString text(int column) const; ///< a null QString for NULL
    int integer(int column) const;  ///< 0 for NULL and for what no int can hold
    bool flag(int column) const;    ///< true for any number but 0
    double number(int column) const;

    bool isNull(const char* column) const;
    QString text(const char* column) const;
    int integer(const char* column) const;
    bool flag(const char* column) const;
    double number(const char* column) const;
    /// The day of a date or datetime column; invalid for NULL.
    QDate date(const char* column) const;

    qsizetype place() const { return m_index; } ///< in its record set, from 0
    /// The same cells.
    bool operator==(const Row& other) const;

private:
    const RecordSet* m_set;
    qsizetype m_index;
};

/// Rows read whole into memory. Every value is text as the server writes it: bit '1', money
/// '12.3400', datetime '2008-04-01 00:00:00.000'; NULL is the null QString, which differs from ''.
/// The texts stand one behind another: reading, comparing and freeing a hundred thousand of them would else
/// be a hundred thousand allocations.
class RecordSet {
public:
    RecordSet() = default;
    explicit RecordSet(QStringList columns) : m_columns(std::move(columns)) {}

    const QStringList& columns() const { return m_columns; }
    qsizetype rowCount() const {
        return m_columns.isEmpty() ? 0 : qsizetype(m_cells.size()) / m_columns.size();
    }
    bool isEmpty() const { return m_cells.empty(); }
    Row row(qsizetype index) const { return {*this, index}; }
    /// Null for NULL; valid until the next append.
    QStringView cell(qsizetype row, int column) const;
    /// The place of a column; throws DbError (207) when there is none of that name.
    int column(const char* name) const;

    /// The rows of the given places, in that order.
    RecordSet arranged(const std::vector<qsizetype>& places) const;
    /// The same columns and cells in the same order.
    bool operator==(const RecordSet&) const = default;

    /// Appends one value; rows fill from left to right.
    void append(QStringView value) {
        m_cells.push_back({m_text.size(), value.isNull() ? nullLength : value.size()});
        m_text.append(value);
    }

    class Iterator {
    public:
        Iterator(const RecordSet& set, qsizetype index) : m_set(&set), m_index(index) {}
        Row operator*() const { return {*m_set, m_index}; }
        Iterator& operator++() {
            ++m_index;
            return *this;
        }
        bool operator!=(const Iterator& other) const { return m_index != other.m_index; }

    private:
        const RecordSet* m_set;
        qsizetype m_index;
    };
    Iterator begin() const { return {*this, 0}; }
    Iterator end() const { return {*this, rowCount()}; }

private:
    struct Cell {
        qsizetype from = 0;
        qsizetype length = 0;
        bool operator==(const Cell&) const = default;
    };
    static constexpr qsizetype nullLength = -1;

    QStringList m_columns;
    QString m_text; ///< of all cells
    std::vector<Cell> m_cells;
};

/// All that one batch yields, in order.
struct Results {
    std::vector<RecordSet> sets;
    std::vector<qint64> counts; ///< rows affected, one per INSERT, UPDATE or DELETE that reports them
};
