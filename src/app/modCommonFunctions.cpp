#include "app/modCommonFunctions.h"

#include <QLocale>

namespace {

const QString storedFormat = "yyyy-MMM-dd HH:mm:ss";

const QString months = "JanFebMarAprMayJunJulAugSepOctNovDec";

/// What a calendar and a clock show, without a time zone: making a QDateTime asks the system for the
/// zone each time, which lists of tens of thousands cannot afford.
struct ClockTime {
    QDate date;
    QTime time;

    bool isValid() const { return date.isValid() && time.isValid(); }
};

/// A date in one of the two fixed forms, read by the places of its parts, which is a hundred times
/// quicker than the general reading of a format. Invalid for any other text.
ClockTime readFixed(QStringView date, qsizetype day, qsizetype month, qsizetype year, QStringView time) {
    const qsizetype name = months.indexOf(date.mid(month, 3));
    if (name < 0 || name % 3 != 0) return {};
    const int seconds = time.size() > 5 ? time.mid(6, 2).toInt() : 0;
    return {QDate(date.mid(year, 4).toInt(), int(name / 3) + 1, date.mid(day, 2).toInt()),
            QTime(time.mid(0, 2).toInt(), time.mid(3, 2).toInt(), seconds)};
}

ClockTime readStored(QStringView text) {
    const bool fixed = text.size() == 20 && text[4] == '-' && text[8] == '-' && text[11] == ' '
                       && text[14] == ':' && text[17] == ':';
    return fixed ? readFixed(text, 9, 5, 0, text.mid(12)) : ClockTime();
}

ClockTime readShown(QStringView text) {
    const bool fixed =
        text.size() == 17 && text[2] == ' ' && text[6] == ' ' && text[11] == ' ' && text[14] == ':';
    return fixed ? readFixed(text, 0, 3, 7, text.mid(12)) : ClockTime();
}

QString shownText(const ClockTime& clock) {
    static const QDate zeroDay = zeroDate().date();
    if (!clock.isValid() || clock.date == zeroDay) return "not specified";
    const QByteArray month = months.mid((clock.date.month() - 1) * 3, 3).toLatin1();
    return QString::asprintf("%02d %s %04d %02d:%02d", clock.date.day(), month.constData(), clock.date.year(),
                             clock.time.hour(), clock.time.minute());
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
    if (const ClockTime clock = readStored(text); clock.isValid()) return {clock.date, clock.time};
    const QDateTime date = QLocale::c().toDateTime(text, storedFormat);
    return date.isValid() ? date : QDateTime::fromString(QString(text).replace(' ', 'T'), Qt::ISODate);
}

QString shownDate(const QDateTime& date) {
    return shownText({date.date(), date.time()});
}

QString shownStoredDate(const QString& stored) {
    const QString text = stored.trimmed();
    if (const ClockTime clock = readStored(text); clock.isValid()) return shownText(clock);
    const QDateTime date = parseStoredDate(stored);
    return date.isValid() || text.isEmpty() ? shownDate(date) : QString("no date (%1)").arg(text);
}

QDateTime parseShownDate(const QString& shown) {
    const ClockTime clock = readShown(shown);
    return clock.isValid() ? QDateTime(clock.date, clock.time) : QDateTime();
}

std::optional<qint64> orderOfShownDate(const QString& shown) {
    const ClockTime clock = readShown(shown);
    if (!clock.isValid()) return {};
    return clock.date.toJulianDay() * 86'400'000 + clock.time.msecsSinceStartOfDay();
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
