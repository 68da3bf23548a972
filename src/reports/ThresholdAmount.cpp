#include "reports/ThresholdAmount.h"

#include <QRegularExpression>

std::optional<qint64> thresholdAmount(const QString& text) {
    static const QRegularExpression number("\\A[0-9]*(\\.[0-9]*)?\\z");
    constexpr double largest = 9e18;
    const double amount = ('0' + text).toDouble() * 10000;
    if (!number.match(text).hasMatch() || amount > largest) return {};
    return qRound64(amount);
}
