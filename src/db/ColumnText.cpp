#include "db/ColumnText.h"

#include "db/CodePage1252.h"
#include "db/Refusal.h"

#include <algorithm>

QString fittingProblem(const QString& fieldLabel, const QString& text, int maxLength, CodePage codePage) {
    if (!text.isValidUtf16())
        return "The " + fieldLabel + " holds half of a character, which the database cannot store.";
    if (codePage == CodePage::Latin1252) {
        const auto foreign = std::find_if_not(text.begin(), text.end(), CodePage1252::holds);
        if (foreign != text.end()) {
            const QString letter = text.mid(foreign - text.begin(), foreign->isHighSurrogate() ? 2 : 1);
            return "The " + fieldLabel + " holds the letter '" + letter
                   + "', which the database cannot store.";
        }
    }
    if (text.size() <= maxLength) return {};
    return "The " + fieldLabel
           + QString(" is too long: %1 characters were entered, %2 fit.").arg(text.size()).arg(maxLength);
}

void requireFits(const QString& fieldLabel, const QString& text, int maxLength, CodePage codePage) {
    const QString problem = fittingProblem(fieldLabel, text, maxLength, codePage);
    if (!problem.isEmpty()) throw Refusal(problem, fieldLabel);
}
