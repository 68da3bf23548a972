#include "addresses/MailEntry.h"

#include "addresses/EmailAddress.h"
#include "db/ColumnText.h"
#include "db/ServerText.h"

#include <QStringList>
#include <algorithm>

namespace {

bool holdsControlCharacter(const QString& text) {
    return std::any_of(text.begin(), text.end(),
                       [](QChar letter) { return letter.category() == QChar::Other_Control; });
}

} // namespace

QString MailEntry::key() const {
    return QStringList{serverKey(billAccount), serverKey(costCentre), level, serverKey(emailAddress)}.join(
        '\n');
}

bool MailEntry::hasLevel() const {
    return level.size() == 1 && level >= "1" && level <= "5";
}

QString fittingProblem(const MailEntry& entry) {
    for (const QString& problem :
         {fittingProblem("bill account", entry.billAccount, 50, CodePage::Unicode),
          fittingProblem("cost centre", entry.costCentre, 30, CodePage::Unicode),
          fittingProblem("e-mail address", entry.emailAddress, 254, CodePage::Unicode)})
        if (!problem.isEmpty()) return problem;
    return {};
}

QString problemOf(const MailEntry& entry) {
    if (entry.billAccount.isEmpty()) return "There is no bill account.";
    if (entry.costCentre.isEmpty()) return "There is no cost centre.";
    if (entry.emailAddress.isEmpty()) return "There is no e-mail address.";
    if (!entry.hasLevel()) return "Cost Centre levels should be between 1 and 5";
    for (const QString& text : {entry.billAccount, entry.costCentre, entry.emailAddress})
        if (holdsControlCharacter(text)) return "A field holds a character that is no letter.";
    if (const QString problem = fittingProblem(entry); !problem.isEmpty()) return problem;
    return isValidEmailAddress(entry.emailAddress) ? QString() : "The e-mail address is not valid.";
}
