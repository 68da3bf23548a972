#pragma once

#include "addresses/MailEntry.h"

#include <QList>
#include <functional>
#include <optional>

class Connection;

/// The stored e-mail address book, ordered by account, level, cost centre and address.
QList<MailEntry> readMailAddresses(Connection& connection);

/// What others changed in the stored address book.
struct ForeignChanges {
    QList<MailEntry> stored; ///< the book as it is now
    QList<MailEntry> added;
    QList<MailEntry> removed;
};

/// Replaces the stored book, all or nothing, provided that it still is as it was read: else nothing is
/// written and the changes are returned. `tell` hears how many entries are written. Throws DbError.
std::optional<ForeignChanges> saveMailAddresses(Connection& connection, const QList<MailEntry>& book,
                                                const QList<MailEntry>& asRead,
                                                const std::function<void(qsizetype written)>& tell);
