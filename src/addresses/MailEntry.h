#pragma once

#include <QString>

/// One entry of the e-mail address book: where the files of a cost centre are sent.
struct MailEntry {
    QString billAccount;
    QString costCentre;
    QString level = "1"; ///< of the cost centre, 1 to 5; a stored entry may hold anything
    QString emailAddress;

    bool operator==(const MailEntry& other) const {
        return billAccount == other.billAccount && costCentre == other.costCentre && level == other.level
               && emailAddress == other.emailAddress;
    }
    /// The same for entries that the server would call equal: without regard to case and to blanks at
    /// the end.
    QString key() const;
    bool hasLevel() const;
};

/// Why a column of the address book cannot hold a text; empty when all can.
QString fittingProblem(const MailEntry& entry);
/// Why an entry cannot be taken into the address book, in words; empty when it can.
QString problemOf(const MailEntry& entry);
