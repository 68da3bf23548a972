#pragma once

#include "addresses/MailEntry.h"

#include <QList>
#include <QStringList>

/// A line of a CSV file of addresses.
struct AddressLine {
    int number = 0;     ///< in the file, from 1
    QStringList fields; ///< empty where a double quote is not closed
};

/// What a CSV file of addresses holds, without its blank lines.
struct AddressFile {
    qsizetype columns = 0; ///< of the first line
    QStringList heading;   ///< the first line when it holds no address
    QList<AddressLine> lines;

    bool hasUsableColumns() const { return columns >= 2 && columns <= 4; }
};

/// Reads a file (db/ForeignText.h). A field in double quotes may hold
/// commas; an apostrophe before a formula is taken away. Throws std::runtime_error when the file cannot be
/// read.
AddressFile readAddressFile(const QString& path);

/// Whether the entry's line in a file reads back as the same entry: one that is not valid would be refused.
bool survivesExport(const MailEntry& entry);
/// Writes the whole file or leaves the former one: the fields in the order account, cost centre, level,
/// address, with commas between; a field that would not read back so is put in double quotes, one that
/// spreadsheets would take for a formula behind an apostrophe. Throws std::runtime_error.
void writeAddressFile(const QString& path, const QList<MailEntry>& entries);
