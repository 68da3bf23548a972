#include "soak/Journal.h"

#include <algorithm>
#include <stdexcept>

namespace soak {

Journal::Journal(const QString& path) : m_file(path) {
    if (!m_file.open(QIODevice::Append | QIODevice::Unbuffered))
        throw std::runtime_error("The journal cannot be written: " + m_file.errorString().toStdString());
}

void Journal::note(Entry entry, int number, const Work& work) {
    m_file.write(QString("%1 %2 %3 %4\n")
                     .arg(entry)
                     .arg(number)
                     .arg(work.templateVersion)
                     .arg(work.scheduleVersion)
                     .toLatin1());
}

void Ledger::readJournal() {
    QFile file(m_journal);
    if (!file.open(QIODevice::ReadWrite)) return; // the saver was killed before it had made one
    while (!file.atEnd()) {
        const QList<QByteArray> fields = file.readLine().trimmed().split(' ');
        const int number = fields.value(1).toInt();
        const Work work{fields.value(2).toInt(), fields.value(3).toInt()};
        std::set<Work>& possible = m_possible.insert({number, {Work()}}).first->second;
        switch (fields.value(0).toInt()) {
        case Journal::Try:
            possible.insert(work);
            break;
        case Journal::Did:
            possible = {work};
            ++m_saves;
            break;
        default:
            possible.erase(work);
            ++m_refused;
        }
    }
    file.resize(0);
}

void Ledger::settle(Connection& connection, const Tell& tell) {
    readJournal();
    const QMap<int, StoredWork> stored = readWorks(connection, m_saver, tell);
    for (auto& [number, possible] : m_possible) {
        const Work found = stored.value(number);
        if (possible.size() > 1) ++m_cutOff;
        if (!possible.contains(found)) {
            const auto agrees = [&](int Work::*version) {
                return std::ranges::any_of(possible,
                                           [&](const Work& work) { return work.*version == found.*version; });
            };
            const bool isPart = agrees(&Work::templateVersion) && agrees(&Work::scheduleVersion);
            tell(isPart ? Fault::Half : Fault::Lost, QString("%1 %2 is stored as template %3, schedule %4")
                                                         .arg(m_saver)
                                                         .arg(number)
                                                         .arg(found.templateVersion)
                                                         .arg(found.scheduleVersion));
        }
        possible = {found};
    }
    for (auto work = stored.begin(); work != stored.end(); ++work)
        if (!m_possible.contains(work.key())) tell(Fault::Lost, "what nobody noted is stored");
}

} // namespace soak
