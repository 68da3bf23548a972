#include "app/modCommonFunctions.h"

#include <QLocale>

namespace {

const QString storedFormat = "yyyy-MMM-dd HH:mm:ss";
const QString shownFormat = "dd MMM yyyy HH:mm";

QString counted(qint64 count, const QString& unit) {
    return QString("%1 %2%3").arg(count).arg(unit, count == 1 ? "" : "s");
}

} // namespace

QDateTime zeroDate() {
    return QDate(1899, 12, 30).startOfDay();
}

QString storedDate(const QDateTime& date) {
    return QLocale::c().toString(date, storedFormat);
}

QDateTime parseStoredDate(const QString& stored) {
    const QString text = stored.trimmed();
    const QDateTime date = QLocale::c().toDateTime(text, storedFormat);
    return date.isValid() ? date : QDateTime::fromString(QString(text).replace(' ', 'T'), Qt::ISODate);
}

QString shownDate(const QDateTime& date) {
    return !date.isValid() || date.date() == zeroDate().date() ? "not specified"
                                                              : QLocale::c().toString(date, shownFormat);
}

QString shownStoredDate(const QString& stored) {
    const QDateTime date = parseStoredDate(stored);
    return date.isValid() || stored.trimmed().isEmpty() ? shownDate(date)
                                                        : QString("no date (%1)").arg(stored.trimmed());
}

QDateTime parseShownDate(const QString& shown) {
    return QLocale::c().toDateTime(shown, shownFormat);
}

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
