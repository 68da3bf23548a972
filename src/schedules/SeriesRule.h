#pragma once

#include "base/WallClock.h"

#include <QList>

/// On which days a schedule is repeated.
struct SeriesRule {
    enum Unit { Days, Weeks, Months };
    enum InMonth { OnDay, OnLastDay, OnWeekday };
    static constexpr int lastInMonth = 5;

    Unit unit = Months;
    int every = 1;           ///< days, weeks or months
    QList<int> weekdays{};   ///< Qt::DayOfWeek, of weeks
    InMonth inMonth = OnDay; ///< of months
    int day = 1;             ///< 1 to 31; in a shorter month, its last day
    int nth = 1;             ///< 1 to 4, or lastInMonth: the how many-th
    int weekday = 1;         ///< Qt::DayOfWeek, of nth
    int times = 0;           ///< how often; 0: until a date
    QDate until{};           ///< the last day, where `times` is 0
};

inline constexpr int longestSeries = 366;

struct SeriesDates {
    QList<WallClock> dates;
    int passed = 0; ///< days before the one from which on they are wanted
};
/// The moments of a series, at the time of the first, and on its day or after it, from a day on. Of one that
/// is too long, one more than longestSeries.
SeriesDates seriesDates(const SeriesRule& rule, const WallClock& first, QDate from);
/// What a user should know of a moment of a series: that the clocks change, or that a month is too short;
/// empty when there is nothing.
QString seriesNote(const SeriesRule& rule, const WallClock& when);

/// How the titles of a series are told apart.
enum class SeriesTitles { Dates, Numbers };

/// "March 01 Dec 2026" or "March (7)", the beginning cut so that the longest of `count` titles fits.
QString seriesTitle(const QString& title, SeriesTitles titles, const WallClock& when, int number, int count);
/// What the titles of a series have in common.
QString seriesStem(const QString& title);
