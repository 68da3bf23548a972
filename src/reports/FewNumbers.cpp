#include "reports/FewNumbers.h"

QString fewNumbers(const QString& joined) {
    constexpr int numbersShown = 8;
    qsizetype end = -1;
    for (int i = 0; i < numbersShown; ++i) {
        end = joined.indexOf(", ", end + 1);
        if (end < 0) return joined;
    }
    return joined.left(end) + ", …";
}
