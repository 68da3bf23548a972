#pragma once

#include "addresses/MailEntry.h"

#include <QHash>
#include <QList>
#include <QMap>

/// The e-mail address book while it is edited. Every entry has an ID of its own.
class AddressBook {
public:
    void setEntries(const QList<MailEntry>& entries);
    /// Whether the book holds the entry, in letters of either case.
    bool EntryAlreadyExists(const MailEntry& entry) const { return m_keys.contains(entry.key()); }
    /// Appends an entry and returns its ID.
    int AddEntrytoGrid(const MailEntry& entry);
    void remove(int id);

    const QMap<int, MailEntry>& entries() const { return m_entries; } ///< by ID, in the order added
    QList<MailEntry> list() const { return m_entries.values(); }

private:
    QMap<int, MailEntry> m_entries;
    QHash<QString, int> m_keys; ///< how many entries have it
    int m_nextId = 1;
};
