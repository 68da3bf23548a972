#pragma once

#include <QAbstractTableModel>
#include <QColor>
#include <QHash>
#include <QIcon>
#include <QSortFilterProxyModel>
#include <functional>
#include <limits>
#include <optional>
#include <variant>
#include <vector>

/// A column of a list: its caption, on which side it stands, how wide it is at first.
struct ListColumn {
    enum Kind { Text, Number };

    QString caption;
    Kind kind = Text;
    int width = 20; ///< share of the list's width, in characters, until the user sets another
};

/// What a cell shows, and what it sorts by: a value, or else its text without regard to case. In one column
/// texts come after values.
struct ListCell {
    QString text;
    std::optional<double> order;
    QIcon icon{};
    QString toolTip{}; ///< instead of the row's

    ListCell() = default;
    ListCell(const QString& shown) : text(shown) {}
    ListCell(const char* shown) : text(shown) {}
    ListCell(const QString& shown, double sortedBy) : text(shown), order(sortedBy) {}
    /// Comes before all values when there is none.
    ListCell(const QString& shown, const std::optional<double>& sortedBy)
        : text(shown), order(sortedBy.value_or(-std::numeric_limits<double>::infinity())) {}
    static ListCell number(int value) { return {QString::number(value), double(value)}; }

    bool operator==(const ListCell& other) const {
        return text == other.text && order == other.order && icon.cacheKey() == other.icon.cacheKey()
               && toolTip == other.toolTip;
    }
};

/// A row of a list, keyed by its record's ID.
struct ListRow {
    int id = 0;
    QList<ListCell> cells;   ///< one for each column
    QColor background{};     ///< invalid: the list's own
    bool emphasized = false; ///< in bold
    QString toolTip{};

    QString text(int column) const { return cells.value(column).text; }

    bool operator==(const ListRow& other) const {
        return id == other.id && cells == other.cells && background == other.background
               && emphasized == other.emphasized && toolTip == other.toolTip;
    }
};

/// The rows of a list. New rows are merged in by their ID, so that what did not change is neither
/// redrawn nor deselected; where too much is gone at once, the model is reset.
class ListModel : public QAbstractTableModel {
    Q_OBJECT

public:
    enum Role { IdRole = Qt::UserRole, KeyRole }; ///< KeyRole: the row's key, "17ID"

    explicit ListModel(std::vector<ListColumn> columns, QObject* parent = nullptr);

    void setRows(std::vector<ListRow> rows);
    /// The same for a few of many rows: those of `gone` go, `rows` replace those of their ID or are added.
    void update(std::vector<ListRow> rows, const std::vector<int>& gone);
    const std::vector<ListRow>& rows() const { return m_rows; }
    const std::vector<ListColumn>& columnList() const { return m_columns; }
    /// The row of an ID; -1 when there is none.
    int rowOf(int id) const { return m_rowOf.value(id, -1); }
    /// New cells for a column; `cellOf` gives that of a row, or nothing for one that stays as it is.
    void setCells(int column, const std::function<std::optional<ListCell>(const ListRow&)>& cellOf);

    /// What a cell sorts by: its value, or its text folded.
    using SortKey = std::variant<double, QString>;
    const SortKey& sortKey(int row, int column) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    /// Rows can be dropped between rows, in lists that let them be dragged.
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    Qt::DropActions supportedDropActions() const override { return Qt::MoveAction; }

private:
    using Ranges = std::vector<std::pair<int, int>>;
    Ranges goneRanges(const std::function<bool(int id)>& isGone) const;
    void removeRanges(const Ranges& ranges);
    void takeRows(std::vector<ListRow> rows);
    void arrange(const std::vector<int>& order);
    void resetRows(std::vector<ListRow> rows);
    static QString toolTip(const ListRow& row, int column);
    QVariant alignment(int column) const;
    void makeKeysFrom(int first);
    void makeKeys(int row);
    void indexRows();

    std::vector<ListColumn> m_columns;
    std::vector<ListRow> m_rows;
    std::vector<std::vector<SortKey>> m_keys; ///< beside m_rows
    QHash<int, int> m_rowOf;
};

/// Sorts by the typed keys and shows only rows that hold the typed words; marks the sorted column's
/// caption with "^" or "v".
class ListOrder : public QSortFilterProxyModel {
    Q_OBJECT

public:
    explicit ListOrder(ListModel* source, QObject* parent = nullptr);

    /// Rows stay that hold every word in any of their columns, without regard to case.
    void setFilterWords(const QString& words);
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

protected:
    bool lessThan(const QModelIndex& left, const QModelIndex& right) const override;
    bool filterAcceptsRow(int sourceRow, const QModelIndex& sourceParent) const override;

private:
    ListModel* m_source;
    QStringList m_words;
};
