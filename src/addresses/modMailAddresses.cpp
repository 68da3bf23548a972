#include "addresses/modMailAddresses.h"

#include "db/Connection.h"
#include "db/Refusal.h"

#include <algorithm>
#include <tuple>

namespace {

bool comesBefore(const MailEntry& left, const MailEntry& right) {
    return std::tie(left.billAccount, left.level, left.costCentre, left.emailAddress)
           < std::tie(right.billAccount, right.level, right.costCentre, right.emailAddress);
}

QList<MailEntry> sorted(QList<MailEntry> entries) {
    std::sort(entries.begin(), entries.end(), comesBefore);
    return entries;
}

/// By place: only the order of the columns is the same in databases of every age.
QList<MailEntry> entriesOf(const RecordSet& rows) {
    QList<MailEntry> entries;
    entries.reserve(rows.rowCount());
    for (const Row row : rows) entries.append({row.text(0), row.text(1), row.text(3), row.text(2)});
    return sorted(entries);
}

/// The sorted entries that are not among the other sorted ones.
QList<MailEntry> difference(const QList<MailEntry>& entries, const QList<MailEntry>& others) {
    QList<MailEntry> rest;
    std::set_difference(entries.begin(), entries.end(), others.begin(), others.end(),
                        std::back_inserter(rest), comesBefore);
    return rest;
}

Sql insertOf(const MailEntry& entry) {
    return sql("INSERT INTO NorvaScheduler.dbo.tblMailAddresses Values ({}, {}, {}, {})", entry.billAccount,
               entry.costCentre, entry.emailAddress, entry.level);
}

void replace(Connection& connection, const QList<MailEntry>& book,
             const std::function<void(qsizetype written)>& tell) {
    connection.execute(sql("Delete from NorvaScheduler.dbo.tblMailAddresses"));
    QList<Sql> inserts;
    for (const MailEntry& entry : book) inserts << insertOf(entry);
    connection.executeAll(inserts, tell);
}

} // namespace

QList<MailEntry> readMailAddresses(Connection& connection) {
    return entriesOf(
        connection.query(sql("SELECT * FROM NorvaScheduler.dbo.tblMailAddresses WITH (NOLOCK)")));
}

std::optional<ForeignChanges> saveMailAddresses(Connection& connection, const QList<MailEntry>& book,
                                                const QList<MailEntry>& asRead,
                                                const std::function<void(qsizetype written)>& tell) {
    const QList<MailEntry> expected = sorted(asRead);
    for (const MailEntry& entry : difference(sorted(book), expected))
        if (const QString problem = fittingProblem(entry); !problem.isEmpty()) throw Refusal(problem);

    Transaction transaction(connection);
    // Nobody may change the book between the comparison and the replacement.
    const QList<MailEntry> stored = entriesOf(
        connection.query(sql("SELECT * FROM NorvaScheduler.dbo.tblMailAddresses WITH (TABLOCKX, HOLDLOCK)")));
    // A book that is stored already was saved before, by a commit whose answer got lost.
    if (stored != sorted(book)) {
        if (stored != expected)
            return ForeignChanges{stored, difference(stored, expected), difference(expected, stored)};
        replace(connection, book, tell);
    }
    transaction.commit();
    return {};
}
