#pragma once

#include "ui/ListModel.h"

/// An entry to tick. Keys are unique within a list, as the server compares them.
struct CheckListEntry {
    QString key;
    QStringList texts; ///< one for each column
};

/// Entries to tick, in the order given, of which only those are shown that hold the typed words. Made
/// for lists of many thousands: searching and ticking all of them are one step each.
class CheckListModel : public QAbstractTableModel {
    Q_OBJECT

public:
    explicit CheckListModel(QObject* parent = nullptr);

    /// Number columns stand at the right.
    void setColumns(std::vector<ListColumn> columns);
    void setEntries(std::vector<CheckListEntry> entries, const QStringList& tickedKeys);
    QStringList tickedKeys() const; ///< in list order
    int count() const { return int(m_entries.size()); }
    int tickedCount() const { return m_tickedCount; }
    int firstTickedRow() const; ///< of the rows shown; -1 for none
    void setFilterWords(const QString& words);
    void tickShown(bool ticked);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

signals:
    void ticksChanged();

private:
    std::size_t place(int row) const { return m_shown[std::size_t(row)]; }
    void tick(std::size_t place, bool ticked);
    void findShown();

    std::vector<ListColumn> m_columns{{QString()}};
    std::vector<CheckListEntry> m_entries;
    std::vector<bool> m_ticked;       ///< beside m_entries
    std::vector<std::size_t> m_shown; ///< places in m_entries
    QStringList m_words;
    int m_tickedCount = 0;
};
