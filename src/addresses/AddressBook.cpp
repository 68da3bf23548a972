#include "addresses/AddressBook.h"

void AddressBook::setEntries(const QList<MailEntry>& entries) {
    m_entries.clear();
    m_keys.clear();
    for (const MailEntry& entry : entries) AddEntrytoGrid(entry);
}

int AddressBook::AddEntrytoGrid(const MailEntry& entry) {
    m_entries.insert(m_nextId, entry);
    ++m_keys[entry.key()];
    return m_nextId++;
}

void AddressBook::remove(int id) {
    const auto entry = m_entries.constFind(id);
    if (entry == m_entries.constEnd()) return;
    const QString key = entry->key();
    if (--m_keys[key] == 0) m_keys.remove(key);
    m_entries.erase(entry);
}
