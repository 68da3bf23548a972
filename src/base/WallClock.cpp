#include "base/WallClock.h"

#include <QDateTime>
#include <QLocale>
#include <stdexcept>

namespace {

const QString months = "JanFebMarAprMayJunJulAugSepOctNovDec";

std::optional<WallClock> moment(QDate date, QTime time) {
    if (!date.isValid() || !time.isValid()) return {};
    return WallClock(date, time);
}

/// The stored form, read by the places of its parts, which is a hundred times quicker than the general
/// reading of a format. Nothing for any other text.
std::optional<WallClock> readStored(QStringView text) {
    if (text.size() != 20 || text[4] != '-' || text[8] != '-' || text[11] != ' ' || text[14] != ':'
        || text[17] != ':')
        return {};
    const qsizetype month = months.indexOf(text.mid(5, 3));
    if (month < 0 || month % 3 != 0) return {};
    return moment({text.mid(0, 4).toInt(), int(month / 3) + 1, text.mid(9, 2).toInt()},
                  {text.mid(12, 2).toInt(), text.mid(15, 2).toInt(), text.mid(18, 2).toInt()});
}

/// Date and time are read apart: read as one they would be put into a time zone, where they may not exist.
std::optional<WallClock> readGeneral(const QString& text) {
    const qsizetype gap = text.indexOf(text.contains('T') ? 'T' : ' ');
    const QString day = text.left(gap);
    const QString clock = gap < 0 ? "00:00" : text.mid(gap + 1).trimmed();
    const QLocale english = QLocale::c();
    QDate date = english.toDate(day, "yyyy-MMM-dd");
    if (!date.isValid()) date = QDate::fromString(day, Qt::ISODate);
    const QTime time = QTime::fromString(clock, Qt::ISODateWithMs);
    return moment(date, QTime(time.hour(), time.minute(), time.second()));
}

QByteArray monthName(QDate date) {
    return months.mid((date.month() - 1) * 3, 3).toLatin1();
}

} // namespace

WallClock::WallClock(QDate date, QTime time) : m_date(date), m_time(time) {
    if (!date.isValid() || !time.isValid()) throw std::invalid_argument("There is no such date or time.");
}

WallClock WallClock::now() {
    const QDateTime now = QDateTime::currentDateTime();
    return {now.date(), now.time()};
}

std::optional<WallClock> WallClock::fromStored(const QString& stored) {
    const QString text = stored.trimmed();
    if (const auto fixed = readStored(text)) return fixed;
    return readGeneral(text);
}

QString WallClock::stored() const {
    return QString::asprintf("%04d-%s-%02d %02d:%02d:%02d", m_date.year(), monthName(m_date).constData(),
                             m_date.day(), m_time.hour(), m_time.minute(), m_time.second());
}

QString WallClock::iso() const {
    return QString::asprintf("%04d-%02d-%02dT%02d:%02d:%02d", m_date.year(), m_date.month(), m_date.day(),
                             m_time.hour(), m_time.minute(), m_time.second());
}

QString WallClock::shown() const {
    if (isZeroDate()) return "not specified";
    return QString::asprintf("%02d %s %04d %02d:%02d", m_date.day(), monthName(m_date).constData(),
                             m_date.year(), m_time.hour(), m_time.minute());
}

WallClock WallClock::addSecs(qint64 seconds) const {
    const qint64 sum = order() + seconds;
    return {QDate::fromJulianDay(sum / secondsOfDay),
            QTime::fromMSecsSinceStartOfDay(int(sum % secondsOfDay * 1000))};
}

qint64 WallClock::secsTo(const WallClock& other) const {
    return other.order() - order();
}

QString shownStoredDate(const QString& stored) {
    if (const auto date = WallClock::fromStored(stored)) return date->shown();
    const QString text = stored.trimmed();
    return text.isEmpty() ? WallClock().shown() : QString("no date (%1)").arg(text);
}
