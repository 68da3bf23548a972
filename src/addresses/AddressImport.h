#pragma once

#include "addresses/AddressFile.h"

#include <functional>

class AddressBook;

/// Which fields of an entry the columns of a file hold.
enum class AddressField { BillAccount, CostCentre, Level, EmailAddress };
using AddressLayout = QList<AddressField>;

QString layoutText(const AddressLayout& layout);
/// The layouts that a file may have, the most likely first: that of its heading, if it has one, then
/// those that its first line agrees with.
QList<AddressLayout> layoutsFor(const AddressFile& file);

/// A line of the file as an entry, and what becomes of it.
struct ImportRow {
    enum Status {
        New,
        Known,     ///< the book, or an earlier line, holds it
        Refused,   ///< it cannot be an entry; the others still can
        BadLevel,  ///< stops the import
        Unreadable ///< stops the import
    };
    int line = 0;
    MailEntry entry;
    QString levelText; ///< as it stands in the file
    Status status = New;
    QString reason; ///< of all but New
};

/// `defaults` has the account and the level of entries whose line has no such column. `tell` hears how
/// many lines are done.
QList<ImportRow> mapLines(const AddressFile& file, const AddressLayout& layout, const MailEntry& defaults,
                          const AddressBook& book, const std::function<void(qsizetype done)>& tell);

/// How many rows of an import end how.
struct ImportCounts {
    qsizetype added = 0;
    qsizetype known = 0;
    qsizetype refused = 0;
    const ImportRow* stopper = nullptr; ///< the first row that stops the import
};
ImportCounts countRows(const QList<ImportRow>& rows);
/// "3 new, 1 known, 2 refused"
QString countsText(const ImportCounts& counts);
/// What was not added and why: the counts, and the first of the refused lines with their reasons. Empty
/// when all are new.
QString leftOutText(const QList<ImportRow>& rows);
