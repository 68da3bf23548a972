#include "base/modCommonFunctions.h"

#include <QRegularExpression>

namespace {

QString counted(qint64 count, const QString& unit) {
    return QString("%1 %2%3").arg(count).arg(unit, count == 1 ? "" : "s");
}

} // namespace

QString durationText(qint64 seconds, bool showSeconds) {
    const qint64 years = seconds / 31'536'000;
    const qint64 days = seconds % 31'536'000 / 86'400;
    const qint64 hours = seconds % 86'400 / 3'600;
    const qint64 minutes = seconds % 3'600 / 60;
    if (years > 0) return counted(years, "Year") + ", " + counted(days, "Day");
    if (days > 0)
        return counted(days, "Day") + ", " + counted(hours, "Hour") + ", " + counted(minutes, "Min");
    if (hours > 0) return counted(hours, "Hour") + ", " + counted(minutes, "Min");
    if (minutes > 0) return counted(minutes, "Min");
    return showSeconds && seconds >= 1 ? counted(seconds, "Sec") : QString("");
}

QString cutText(const QString& text, qsizetype longest) {
    QString cut = text.left(longest);
    if (cut.size() < text.size() && !cut.isEmpty() && cut.back().isHighSurrogate()) cut.chop(1);
    return cut;
}

QString numberedTitle(const QString& title, int number, qsizetype longest) {
    static const QRegularExpression formerNumber(" \\(\\d+\\)$");
    const QString tail = QString(" (%1)").arg(number);
    return cutText(QString(title).remove(formerNumber), longest - tail.size()) + tail;
}
