#include "schedules/SeriesRule.h"

#include "base/modCommonFunctions.h"
#include "schedules/clsSchedule.h"

#include <QDateTime>
#include <QLocale>
#include <QRegularExpression>

namespace {

constexpr int daysOfWeek = 7;

/// Invalid in a month that has no such day.
QDate nthWeekday(const SeriesRule& rule, QDate month) {
    if (rule.nth == SeriesRule::lastInMonth) {
        const QDate last(month.year(), month.month(), month.daysInMonth());
        return last.addDays(-((last.dayOfWeek() - rule.weekday + daysOfWeek) % daysOfWeek));
    }
    const QDate first(month.year(), month.month(), 1);
    return first.addDays((rule.weekday - first.dayOfWeek() + daysOfWeek) % daysOfWeek
                         + (rule.nth - 1) * daysOfWeek);
}

QDate dayInMonth(const SeriesRule& rule, QDate month) {
    switch (rule.inMonth) {
    case SeriesRule::OnLastDay:
        return {month.year(), month.month(), month.daysInMonth()};
    case SeriesRule::OnWeekday:
        return nthWeekday(rule, month);
    default:
        return {month.year(), month.month(), qMin(rule.day, month.daysInMonth())};
    }
}

/// The days of the series' n-th day, week or month, some of which may lie before its first.
QList<QDate> daysOfPeriod(const SeriesRule& rule, QDate first, int n) {
    switch (rule.unit) {
    case SeriesRule::Days:
        return {first.addDays(qint64(n) * rule.every)};
    case SeriesRule::Weeks: {
        const QDate monday = first.addDays(1 - first.dayOfWeek() + qint64(n) * rule.every * daysOfWeek);
        QList<QDate> days;
        for (int weekday = 1; weekday <= daysOfWeek; ++weekday)
            if (rule.weekdays.contains(weekday)) days << monday.addDays(weekday - 1);
        return days;
    }
    default:
        return {dayInMonth(rule, QDate(first.year(), first.month(), 1).addMonths(n * rule.every))};
    }
}

QString dateTail(const WallClock& when) {
    return ' ' + QLocale::c().toString(when.date(), "dd MMM yyyy");
}

QString numberTail(int number) {
    return QString(" (%1)").arg(number);
}

} // namespace

SeriesDates seriesDates(const SeriesRule& rule, const WallClock& first, QDate from) {
    constexpr int lastYear = 9999; // that stored dates can have
    SeriesDates series;
    if (rule.every < 1 || (rule.unit == SeriesRule::Weeks && rule.weekdays.isEmpty())) return series;
    for (int period = 0;; ++period)
        for (const QDate& day : daysOfPeriod(rule, first.date(), period)) {
            if (day < first.date()) continue;
            const qsizetype taken = series.dates.size() + series.passed;
            const bool ended = rule.times > 0 ? taken >= rule.times : day > rule.until;
            if (ended || series.dates.size() > longestSeries || day.year() > lastYear) return series;
            if (day < from)
                ++series.passed;
            else
                series.dates << WallClock(day, first.time());
        }
}

QString seriesNote(const SeriesRule& rule, const WallClock& when) {
    const QDateTime local(when.date(), when.time());
    const bool isSkipped = !local.isValid() || local.time() != when.time();
    if (isSkipped) return "The clocks are put forward over this hour.";
    const QDateTime hourAgo = local.addSecs(-3600);
    const QDateTime hourAhead = local.addSecs(3600);
    if (hourAgo.time() == local.time() || hourAhead.time() == local.time())
        return "The clocks are put back: this hour comes twice.";
    const bool cut =
        rule.unit == SeriesRule::Months && rule.inMonth == SeriesRule::OnDay && when.date().day() < rule.day;
    return cut ? QString("The month has no day %1.").arg(rule.day) : QString();
}

QString seriesTitle(const QString& title, SeriesTitles titles, const WallClock& when, int number, int count) {
    const bool dated = titles == SeriesTitles::Dates;
    const qsizetype longestTail = dated ? dateTail(when).size() : numberTail(count).size();
    const QString stem = cutText(seriesStem(title), clsSchedule::longestTitle - longestTail);
    return stem + (dated ? dateTail(when) : numberTail(number));
}

QString seriesStem(const QString& title) {
    static const QRegularExpression tail(" (\\(\\d+\\)|\\d{2} [A-Z][a-z]{2} \\d{4})$");
    return QString(title).remove(tail);
}
