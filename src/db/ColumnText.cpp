#include "db/ColumnText.h"

#include "db/Refusal.h"

#include <algorithm>
#include <iterator>

namespace {

/// What code page 1252 has beyond ASCII and Latin-1.
constexpr char16_t extraLetters[] = u"€‚ƒ„…†‡ˆ‰Š‹ŒŽ‘’“”•–—˜™š›œžŸ";

bool isInLatin1252(QChar letter) {
    const char16_t code = letter.unicode();
    return code < 0x80 || (code >= 0xA0 && code <= 0xFF)
           || std::find(std::begin(extraLetters), std::end(extraLetters) - 1, code)
                  != std::end(extraLetters) - 1;
}

} // namespace

QString fittingProblem(const QString& fieldLabel, const QString& text, int maxLength, CodePage codePage) {
    if (codePage == CodePage::Latin1252) {
        const auto foreign = std::find_if_not(text.begin(), text.end(), isInLatin1252);
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
