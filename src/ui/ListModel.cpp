#include "ui/ListModel.h"

#include "base/FilterWords.h"

#include <QFont>
#include <QSet>
#include <algorithm>

namespace {

ListModel::SortKey keyOf(const ListCell& cell) {
    return cell.order ? ListModel::SortKey(*cell.order) : ListModel::SortKey(cell.text.toCaseFolded());
}

} // namespace

ListModel::ListModel(std::vector<ListColumn> columns, QObject* parent)
    : QAbstractTableModel(parent), m_columns(std::move(columns)) {}

void ListModel::setRows(std::vector<ListRow> rows) {
    QSet<int> ids;
    std::vector<int> order;
    for (const ListRow& row : rows) {
        ids.insert(row.id);
        order.push_back(row.id);
    }
    const Ranges gone = goneRanges([&](int id) { return !ids.contains(id); });
    // Each range costs the views a pass over all rows: beyond some, starting afresh is quicker.
    if (gone.size() > 100) return resetRows(std::move(rows));
    removeRanges(gone);
    takeRows(std::move(rows));
    arrange(order);
}

void ListModel::update(std::vector<ListRow> rows, const std::vector<int>& gone) {
    const QSet<int> ids(gone.begin(), gone.end());
    // Each row costs the views a search and a move of its own: beyond some, starting afresh is quicker.
    if (rows.size() > 1'000) {
        std::vector<ListRow> all = m_rows;
        std::erase_if(all, [&](const ListRow& row) { return ids.contains(row.id); });
        QHash<int, std::size_t> places;
        for (std::size_t i = 0; i < all.size(); ++i) places.insert(all[i].id, i);
        for (ListRow& row : rows) {
            if (const auto place = places.constFind(row.id); place != places.constEnd())
                all[*place] = std::move(row);
            else
                all.push_back(std::move(row));
        }
        return resetRows(std::move(all));
    }
    if (!ids.isEmpty()) removeRanges(goneRanges([&](int id) { return ids.contains(id); }));
    takeRows(std::move(rows));
}

void ListModel::removeRanges(const Ranges& ranges) {
    for (const auto& [first, last] : ranges) {
        beginRemoveRows({}, first, last);
        m_rows.erase(m_rows.begin() + first, m_rows.begin() + last + 1);
        m_keys.erase(m_keys.begin() + first, m_keys.begin() + last + 1);
        endRemoveRows();
    }
    if (!ranges.empty()) indexRows();
}

/// Rows replace those of their ID, or are added behind the others.
void ListModel::takeRows(std::vector<ListRow> rows) {
    std::vector<ListRow> added;
    for (ListRow& row : rows) {
        const int place = rowOf(row.id);
        if (place < 0) {
            added.push_back(std::move(row));
        } else if (!(m_rows[std::size_t(place)] == row)) {
            m_rows[std::size_t(place)] = std::move(row);
            makeKeys(place);
            emit dataChanged(index(place, 0), index(place, columnCount() - 1));
        }
    }
    if (added.empty()) return;
    const int first = int(m_rows.size());
    beginInsertRows({}, first, first + int(added.size()) - 1);
    std::move(added.begin(), added.end(), std::back_inserter(m_rows));
    makeKeysFrom(first);
    endInsertRows();
}

/// Brings the rows into the order of their IDs in `order`.
void ListModel::arrange(const std::vector<int>& order) {
    if (std::ranges::equal(m_rows, order, {}, &ListRow::id)) return;
    emit layoutAboutToBeChanged();
    std::vector<int> formerIds;
    formerIds.reserve(m_rows.size());
    for (const ListRow& row : m_rows) formerIds.push_back(row.id);
    std::vector<ListRow> arranged;
    arranged.reserve(order.size());
    for (const int id : order) arranged.push_back(std::move(m_rows[std::size_t(rowOf(id))]));
    m_rows = std::move(arranged);
    makeKeysFrom(0);
    for (const QModelIndex& each : persistentIndexList())
        changePersistentIndex(each, index(rowOf(formerIds[std::size_t(each.row())]), each.column()));
    emit layoutChanged();
}

/// The last one first.
ListModel::Ranges ListModel::goneRanges(const std::function<bool(int id)>& isGone) const {
    const auto goes = [&](int row) { return isGone(m_rows[std::size_t(row)].id); };
    Ranges ranges;
    for (int last = int(m_rows.size()) - 1; last >= 0; --last) {
        if (!goes(last)) continue;
        int first = last;
        while (first > 0 && goes(first - 1)) --first;
        ranges.emplace_back(first, last);
        last = first;
    }
    return ranges;
}

void ListModel::resetRows(std::vector<ListRow> rows) {
    beginResetModel();
    m_rows = std::move(rows);
    m_rowOf.clear();
    makeKeysFrom(0);
    endResetModel();
}

void ListModel::makeKeysFrom(int first) {
    m_keys.resize(m_rows.size());
    for (int row = first; row < int(m_rows.size()); ++row) {
        makeKeys(row);
        m_rowOf.insert(m_rows[std::size_t(row)].id, row);
    }
}

void ListModel::indexRows() {
    m_rowOf.clear();
    for (std::size_t i = 0; i < m_rows.size(); ++i) m_rowOf.insert(m_rows[i].id, int(i));
}

void ListModel::makeKeys(int row) {
    std::vector<SortKey> keys;
    for (std::size_t column = 0; column < m_columns.size(); ++column)
        keys.push_back(keyOf(m_rows[std::size_t(row)].cells.value(qsizetype(column))));
    m_keys[std::size_t(row)] = std::move(keys);
}

void ListModel::setCells(int column, const std::function<std::optional<ListCell>(const ListRow&)>& cellOf) {
    int first = rowCount();
    int last = -1;
    for (int row = 0; row < rowCount(); ++row) {
        ListRow& shown = m_rows[std::size_t(row)];
        const std::optional<ListCell> cell = cellOf(shown);
        if (!cell || *cell == shown.cells[column]) continue;
        shown.cells[column] = *cell;
        makeKeys(row);
        first = qMin(first, row);
        last = row;
    }
    if (last >= 0) emit dataChanged(index(first, column), index(last, column));
}

const ListModel::SortKey& ListModel::sortKey(int row, int column) const {
    return m_keys[std::size_t(row)][std::size_t(column)];
}

int ListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : int(m_rows.size());
}

int ListModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : int(m_columns.size());
}

QVariant ListModel::data(const QModelIndex& index, int role) const {
    const ListRow& row = m_rows[std::size_t(index.row())];
    switch (role) {
    case Qt::DisplayRole:
        return row.text(index.column());
    case Qt::ToolTipRole:
        return toolTip(row, index.column());
    case Qt::DecorationRole: {
        const QIcon icon = row.cells.value(index.column()).icon;
        return icon.isNull() ? QVariant() : QVariant(icon);
    }
    case Qt::TextAlignmentRole:
        return alignment(index.column());
    case Qt::BackgroundRole:
        return row.background.isValid() ? QVariant(row.background) : QVariant();
    case Qt::FontRole: {
        QFont bold;
        bold.setBold(true);
        return row.emphasized ? QVariant(bold) : QVariant();
    }
    case IdRole:
        return row.id;
    case KeyRole:
        return QString::number(row.id) + "ID";
    default:
        return {};
    }
}

/// Of the cell, or of its row; a cell without either may be cut, and shows its text.
QString ListModel::toolTip(const ListRow& row, int column) {
    const ListCell& cell = row.cells[column];
    if (!cell.toolTip.isEmpty()) return cell.toolTip;
    return row.toolTip.isEmpty() ? cell.text : row.toolTip;
}

QVariant ListModel::alignment(int column) const {
    const bool isNumber = m_columns[std::size_t(column)].kind == ListColumn::Number;
    return int((isNumber ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
}

QVariant ListModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal) return {};
    if (role == Qt::TextAlignmentRole) return alignment(section);
    if (role != Qt::DisplayRole) return {};
    return m_columns[std::size_t(section)].caption;
}

Qt::ItemFlags ListModel::flags(const QModelIndex& index) const {
    return index.isValid() ? QAbstractTableModel::flags(index) | Qt::ItemIsDragEnabled
                           : Qt::ItemIsDropEnabled;
}

ListOrder::ListOrder(ListModel* source, QObject* parent) : QSortFilterProxyModel(parent), m_source(source) {
    setSourceModel(source);
}

void ListOrder::setFilterWords(const QString& words) {
    m_words = filterWords(words);
    invalidateFilter();
}

QVariant ListOrder::headerData(int section, Qt::Orientation orientation, int role) const {
    const QVariant caption = m_source->headerData(section, orientation, role);
    if (role != Qt::DisplayRole || section != sortColumn()) return caption;
    return caption.toString() + (sortOrder() == Qt::AscendingOrder ? " ^" : " v");
}

bool ListOrder::lessThan(const QModelIndex& left, const QModelIndex& right) const {
    return m_source->sortKey(left.row(), left.column()) < m_source->sortKey(right.row(), right.column());
}

bool ListOrder::filterAcceptsRow(int sourceRow, const QModelIndex&) const {
    if (m_words.isEmpty()) return true;
    const ListRow& row = m_source->rows()[std::size_t(sourceRow)];
    QString texts;
    for (const ListCell& cell : row.cells) texts += '\n' + cell.text;
    return holdsWords(texts, m_words);
}
