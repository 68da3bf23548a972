#include "app/modCommonFunctions.h"

#include <QLocale>

namespace {

const QString storedFormat = "yyyy-MMM-dd HH:mm:ss";
const QString shownFormat = "dd MMM yyyy HH:mm";

const QString months = "JanFebMarAprMayJunJulAugSepOctNovDec";

/// A date in one of the two fixed forms, read by the places of its parts: lists hold tens of thousands,
/// and the general reading of a format takes a hundred times as long. Invalid for any other text.
QDateTime readFixed(QStringView date, qsizetype day, qsizetype month, qsizetype year, QStringView time) {
    const qsizetype name = months.indexOf(date.mid(month, 3));
    if (name < 0 || name % 3 != 0) return {};
    const QDate read(date.mid(year, 4).toInt(), int(name / 3) + 1, date.mid(day, 2).toInt());
    const int seconds = time.size() > 5 ? time.mid(6, 2).toInt() : 0;
    const QTime clock(time.mid(0, 2).toInt(), time.mid(3, 2).toInt(), seconds);
    return read.isValid() && clock.isValid() ? QDateTime(read, clock) : QDateTime();
}

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
    if (text.size() == 20 && text[4] == '-' && text[8] == '-' && text[11] == ' ' && text[14] == ':' && text[17] == ':')
        if (const QDateTime date = readFixed(text, 9, 5, 0, QStringView(text).mid(12)); date.isValid()) return date;
    const QDateTime date = QLocale::c().toDateTime(text, storedFormat);
    return date.isValid() ? date : QDateTime::fromString(QString(text).replace(' ', 'T'), Qt::ISODate);
}

QString shownDate(const QDateTime& date) {
    static const QDate zeroDay = zeroDate().date();
    return !date.isValid() || date.date() == zeroDay ? "not specified" : QLocale::c().toString(date, shownFormat);
}

QString shownStoredDate(const QString& stored) {
    const QDateTime date = parseStoredDate(stored);
    return date.isValid() || stored.trimmed().isEmpty() ? shownDate(date)
                                                        : QString("no date (%1)").arg(stored.trimmed());
}

QDateTime parseShownDate(const QString& shown) {
    if (shown.size() == 17 && shown[2] == ' ' && shown[6] == ' ' && shown[11] == ' ' && shown[14] == ':')
        return readFixed(shown, 0, 3, 7, QStringView(shown).mid(12));
    return {};
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
