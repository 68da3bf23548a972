#include "ui/CheckListModel.h"

#include "base/FilterWords.h"
#include "db/ServerText.h"

#include <QSet>
#include <algorithm>

CheckListModel::CheckListModel(QObject* parent) : QAbstractTableModel(parent) {}

void CheckListModel::setColumns(std::vector<ListColumn> columns) {
    beginResetModel();
    m_columns = std::move(columns);
    endResetModel();
}

void CheckListModel::setEntries(std::vector<CheckListEntry> entries, const QStringList& tickedKeys) {
    QSet<QString> wanted;
    for (const QString& key : tickedKeys) wanted.insert(serverKey(key));
    beginResetModel();
    m_entries = std::move(entries);
    m_ticked.assign(m_entries.size(), false);
    m_tickedCount = 0;
    for (std::size_t i = 0; i < m_entries.size(); ++i) tick(i, wanted.contains(serverKey(m_entries[i].key)));
    findShown();
    endResetModel();
}

QStringList CheckListModel::tickedKeys() const {
    QStringList keys;
    for (std::size_t i = 0; i < m_entries.size(); ++i)
        if (m_ticked[i]) keys << m_entries[i].key;
    return keys;
}

int CheckListModel::firstTickedRow() const {
    const auto found = std::ranges::find_if(m_shown, [this](std::size_t each) { return m_ticked[each]; });
    return found == m_shown.end() ? -1 : int(found - m_shown.begin());
}

void CheckListModel::setFilterWords(const QString& words) {
    beginResetModel();
    m_words = filterWords(words);
    findShown();
    endResetModel();
}

void CheckListModel::findShown() {
    m_shown.clear();
    for (std::size_t i = 0; i < m_entries.size(); ++i) {
        if (holdsWords(m_entries[i].texts.join('\n'), m_words)) m_shown.push_back(i);
    }
}

void CheckListModel::tick(std::size_t place, bool ticked) {
    m_tickedCount += int(ticked) - int(m_ticked[place]);
    m_ticked[place] = ticked;
}

void CheckListModel::tickShown(bool ticked) {
    if (m_shown.empty()) return;
    for (const std::size_t each : m_shown) tick(each, ticked);
    emit dataChanged(index(0, 0), index(rowCount() - 1, 0), {Qt::CheckStateRole});
    emit ticksChanged();
}

int CheckListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : int(m_shown.size());
}

int CheckListModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : int(m_columns.size());
}

Qt::ItemFlags CheckListModel::flags(const QModelIndex& index) const {
    const Qt::ItemFlags flags = QAbstractTableModel::flags(index);
    return index.column() == 0 ? flags | Qt::ItemIsUserCheckable : flags;
}

QVariant CheckListModel::data(const QModelIndex& index, int role) const {
    const auto& column = m_columns[std::size_t(index.column())];
    switch (role) {
    case Qt::DisplayRole:
    case Qt::ToolTipRole:
        return m_entries[place(index.row())].texts.value(index.column());
    case Qt::CheckStateRole:
        if (index.column() != 0) return {};
        return m_ticked[place(index.row())] ? Qt::Checked : Qt::Unchecked;
    case Qt::TextAlignmentRole:
        return int(Qt::AlignVCenter | (column.kind == ListColumn::Number ? Qt::AlignRight : Qt::AlignLeft));
    default:
        return {};
    }
}

bool CheckListModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (role != Qt::CheckStateRole || index.column() != 0) return false;
    tick(place(index.row()), value.toInt() == Qt::Checked);
    emit dataChanged(index, index, {Qt::CheckStateRole});
    emit ticksChanged();
    return true;
}

QVariant CheckListModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal) return {};
    const ListColumn& column = m_columns[std::size_t(section)];
    if (role == Qt::DisplayRole) return column.caption;
    if (role == Qt::TextAlignmentRole && column.kind == ListColumn::Number)
        return int(Qt::AlignRight | Qt::AlignVCenter);
    return {};
}
