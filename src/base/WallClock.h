#pragma once

#include <QDate>
#include <QString>
#include <QTime>
#include <compare>
#include <optional>

/// A date and a time as a calendar and a clock on the server's wall show them, to the second and without
/// a time zone: a time zone has hours that a clock change skips, the texts of the database have none. Every
/// object is a valid moment.
class WallClock {
public:
    /// The zero date, 30 December 1899: what a schedule that never ran holds.
    WallClock() = default;
    /// Throws std::invalid_argument when either is invalid.
    WallClock(QDate date, QTime time);
    static WallClock now();

    /// Reads "yyyy-mmm-dd Hh:Nn:Ss" with English months, and ISO forms, which other programs write.
    /// Nothing for empty or other text.
    static std::optional<WallClock> fromStored(const QString& stored);
    /// "yyyy-mmm-dd Hh:Nn:Ss" with English months, the form of date texts in the database.
    QString stored() const;
    /// "yyyy-mm-ddTHh:Nn:Ss", which fromStored() reads as well.
    QString iso() const;
    /// "dd mmm yyyy Hh:Nn" with English months; "not specified" for a zero date.
    QString shown() const;

    QDate date() const { return m_date; }
    QTime time() const { return m_time; }
    bool isZeroDate() const { return m_date == WallClock().m_date; }
    WallClock addSecs(qint64 seconds) const;
    WallClock addDays(qint64 days) const { return {m_date.addDays(days), m_time}; }
    /// Seconds from this to the other; negative when the other is earlier.
    qint64 secsTo(const WallClock& other) const;
    /// A number that grows with the moment.
    qint64 order() const {
        return m_date.toJulianDay() * secondsOfDay + m_time.msecsSinceStartOfDay() / 1000;
    }

    auto operator<=>(const WallClock& other) const { return order() <=> other.order(); }
    bool operator==(const WallClock& other) const { return order() == other.order(); }

private:
    static constexpr qint64 secondsOfDay = 86'400;

    QDate m_date{1899, 12, 30};
    QTime m_time{0, 0};
};

/// What a list shows for a stored date: its shown form, or the text itself, marked, where it is no date.
QString shownStoredDate(const QString& stored);
