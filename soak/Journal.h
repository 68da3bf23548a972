#pragma once

#include "soak/Work.h"

#include <QFile>
#include <map>
#include <set>

namespace soak {

/// What a saving program notes of each save, before and after it, in a file that outlives it.
class Journal {
public:
    enum Entry {
        Try, ///< the save begins
        Did, ///< the program was told that it is stored
        Not, ///< that it is not
    };

    /// Throws std::runtime_error for a file that cannot be written.
    explicit Journal(const QString& path);
    void note(Entry entry, int number, const Work& work);

private:
    QFile m_file;
};

/// What must be stored, as far as the journal tells.
class Ledger {
public:
    Ledger(const QString& saver, const QString& journal) : m_saver(saver), m_journal(journal) {}

    const QString& saver() const { return m_saver; }
    /// Whether the saver has noted anything since the last time.
    bool hasNews() const { return QFile(m_journal).size() > 0; }
    /// While the saver does not run: compares what is stored with the journal, and empties that.
    void settle(Connection& connection, const Tell& tell);

    int saves() const { return m_saves; }
    int refused() const { return m_refused; }
    int cutOff() const { return m_cutOff; } ///< whose outcome nobody was told

private:
    void readJournal();

    QString m_saver;
    QString m_journal;
    std::map<int, std::set<Work>> m_possible; ///< by number; what is missing was never tried
    int m_saves = 0;
    int m_refused = 0;
    int m_cutOff = 0;
};

} // namespace soak
