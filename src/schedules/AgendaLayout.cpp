#include "schedules/AgendaLayout.h"

#include <QLocale>
#include <algorithm>
#include <cmath>

namespace {

constexpr int daysOfWeek = 7;
constexpr qint64 secondsOfDay = 86'400;
constexpr qint64 quarter = 900;
constexpr double linesPerHour = 2;
constexpr double linesPerWeek = 4.7;  // the date and three runs
constexpr double narrowestLane = 1.8; // lines of text: room for a mark

QString inEnglish(QDate day, const QString& format) {
    return QLocale::c().toString(day, format);
}

QDate monday(QDate day) {
    return day.addDays(1 - day.dayOfWeek());
}

} // namespace

AgendaDays shownDays(AgendaView view, QDate day) {
    if (view == AgendaView::Day) return {day, 1};
    if (view == AgendaView::Week) return {monday(day), daysOfWeek};
    const QDate first(day.year(), day.month(), 1);
    const QDate start = monday(first);
    const qint64 days = start.daysTo(first.addDays(day.daysInMonth() - 1)) + 1;
    return {start, int((days + daysOfWeek - 1) / daysOfWeek) * daysOfWeek};
}

QDate turned(AgendaView view, QDate day, int views) {
    if (view == AgendaView::Month) return day.addMonths(views);
    return day.addDays(view == AgendaView::Week ? views * daysOfWeek : views);
}

QString daysText(AgendaView view, QDate day) {
    if (view == AgendaView::Month) return inEnglish(day, "MMMM yyyy");
    if (view == AgendaView::Day) return inEnglish(day, "dddd, d MMMM yyyy");
    const AgendaDays days = shownDays(view, day);
    return inEnglish(days.first, "d MMM yyyy") + " to " + inEnglish(days.last(), "d MMM yyyy");
}

WallClock snapped(const WallClock& when) {
    const qint64 seconds = when.time().msecsSinceStartOfDay() / 1000;
    const qint64 wanted = std::min((seconds + quarter / 2) / quarter * quarter, secondsOfDay - quarter);
    return WallClock(when.date(), QTime(0, 0)).addSecs(wanted);
}

AgendaLayout::AgendaLayout(AgendaView view, QDate day, const std::vector<AgendaRun>& runs,
                           const AgendaSizes& sizes)
    : m_view(view), m_sizes(sizes) {
    const AgendaDays days = shownDays(view, day);
    m_days.reserve(std::size_t(days.count));
    for (int i = 0; i < days.count; ++i) m_days.push_back({days.first.addDays(i), {}});
    if (view == AgendaView::Month)
        layMonth(runs, day);
    else
        layColumns(runs);
}

QSizeF AgendaLayout::size() const {
    return m_days.empty() ? QSizeF() : QSizeF(m_sizes.width, m_days.back().place.bottom());
}

int AgendaLayout::busiest() const {
    const auto most = std::ranges::max_element(m_days, {}, &Day::runs);
    return most == m_days.end() ? 0 : most->runs;
}

void AgendaLayout::layMonth(const std::vector<AgendaRun>& runs, QDate day) {
    m_sizes.gutter = 0;
    const int weeks = int(m_days.size()) / daysOfWeek;
    const double width = m_sizes.width / daysOfWeek;
    const double height = std::max(m_sizes.height / weeks, m_sizes.line * linesPerWeek);
    auto next = std::ranges::lower_bound(runs, m_days.front().date, {},
                                         [](const AgendaRun& run) { return run.start.date(); });
    for (std::size_t i = 0; i < m_days.size(); ++i) {
        Day& box = m_days[i];
        const int column = int(i) % daysOfWeek;
        const int row = int(i) / daysOfWeek;
        box.place = {column * width, row * height, width, height};
        box.within = box.date.month() == day.month();
        Places places;
        for (; next != runs.end() && next->start.date() == box.date; ++next)
            places.push_back(std::size_t(next - runs.begin()));
        box.runs = int(places.size());
        layLines(box, places);
    }
}

/// Below the line of the date.
void AgendaLayout::layLines(const Day& day, const Places& runs) {
    const double line = m_sizes.line * 1.1;
    const double top = day.place.top() + m_sizes.line * 1.3;
    const QRectF first(day.place.left() + 2, top, day.place.width() - 4, line - 1);
    const auto lines = std::size_t(std::max(1.0, std::floor((day.place.bottom() - top) / line)));
    const std::size_t shown = runs.size() <= lines ? runs.size() : lines - 1;
    for (std::size_t i = 0; i < shown; ++i)
        m_items.push_back({runs[i], first.translated(0, double(i) * line)});
    if (shown < runs.size())
        m_more.push_back({day.date, first.translated(0, double(shown) * line), int(runs.size() - shown)});
}

void AgendaLayout::layColumns(const std::vector<AgendaRun>& runs) {
    const double line = m_sizes.line;
    m_hour = std::max(m_sizes.height / 24, line * linesPerHour);
    const double width = (m_sizes.width - m_sizes.gutter) / double(m_days.size());
    for (std::size_t i = 0; i < m_days.size(); ++i)
        m_days[i].place = {m_sizes.gutter + double(i) * width, 0, width, m_hour * 24};

    const QDate last = m_days.back().date;
    std::vector<Places> places(m_days.size());
    for (std::size_t i = 0; i < runs.size() && runs[i].start.date() <= last; ++i) {
        const QDate begin = runs[i].start.date();
        const QDate end = runs[i].seconds > 0 ? runs[i].end().addSecs(-1).date() : begin;
        for (std::size_t day = 0; day < m_days.size(); ++day)
            if (m_days[day].date >= begin && m_days[day].date <= end) places[day].push_back(i);
    }
    for (std::size_t day = 0; day < m_days.size(); ++day) {
        m_days[day].runs = int(std::ranges::count_if(
            places[day], [&](std::size_t run) { return runs[run].start.date() == m_days[day].date; }));
        layColumn(m_days[day], runs, places[day]);
    }
}

/// What a day has of a run. No run is lower than a line of text, and none leaves the day.
QRectF AgendaLayout::columnPlace(const Day& day, const WallClock& start, qint64 seconds) const {
    const WallClock midnight(day.date, QTime(0, 0));
    const auto y = [&](qint64 second) {
        return double(std::clamp<qint64>(second, 0, secondsOfDay)) / 3600 * m_hour;
    };
    const double mark = m_sizes.line * 1.1;
    const double top = std::min(y(midnight.secsTo(start)), day.place.height() - mark);
    const double bottom = std::max(y(midnight.secsTo(start.addSecs(seconds))), top + mark);
    return {day.place.left(), top, day.place.width(), bottom - top};
}

/// Runs that meet, directly or by others between them, are a group; each takes the first lane that is free.
void AgendaLayout::layColumn(const Day& day, const std::vector<AgendaRun>& runs, const Places& places) {
    std::vector<Item> group;
    std::vector<int> lanes;          // of the group's items
    std::vector<double> laneBottoms; // of the group's lanes
    double bottom = 0;
    const WallClock midnight(day.date, QTime(0, 0));
    for (const std::size_t place : places) {
        const AgendaRun& run = runs[place];
        const QRectF rect = columnPlace(day, run.start, run.seconds);
        if (rect.top() >= bottom) {
            spread(day, group, lanes, int(laneBottoms.size()));
            laneBottoms.clear();
        }
        auto lane = std::ranges::find_if(laneBottoms, [&](double end) { return end <= rect.top(); });
        if (lane == laneBottoms.end()) lane = laneBottoms.insert(lane, 0);
        *lane = rect.bottom();
        group.push_back({place, rect, run.start<midnight, run.end()> midnight.addDays(1)});
        lanes.push_back(int(lane - laneBottoms.begin()));
        bottom = std::max(bottom, rect.bottom());
    }
    spread(day, group, lanes, int(laneBottoms.size()));
}

/// Gives the lanes of a group the width of the day. Where they would become too narrow, the last one tells
/// how many runs there are besides.
void AgendaLayout::spread(const Day& day, std::vector<Item>& group, std::vector<int>& lanes, int laneCount) {
    const int room = std::max(2, int(day.place.width() / (m_sizes.line * narrowestLane)));
    const int shown = std::min(laneCount, room);
    const int last = laneCount > room ? room - 1 : laneCount; // the first lane without room
    const double width = (day.place.width() - 4) / std::max(shown, 1);
    QRectF hidden;
    int count = 0;
    for (std::size_t i = 0; i < group.size(); ++i) {
        QRectF& place = group[i].place;
        place.setLeft(day.place.left() + 2 + std::min(lanes[i], last) * width);
        place.setWidth(width - 1);
        if (lanes[i] < last) {
            m_items.push_back(group[i]);
        } else {
            hidden |= place;
            ++count;
        }
    }
    if (count > 0) m_more.push_back({day.date, hidden, count});
    group.clear();
    lanes.clear();
}

const AgendaLayout::Item* AgendaLayout::itemAt(const QPointF& point) const {
    const auto found =
        std::ranges::find_if(m_items, [&](const Item& item) { return item.place.contains(point); });
    return found == m_items.end() ? nullptr : &*found;
}

const AgendaLayout::Item* AgendaLayout::itemOf(std::size_t run) const {
    const auto found = std::ranges::find(m_items, run, &Item::run);
    return found == m_items.end() ? nullptr : &*found;
}

const AgendaLayout::More* AgendaLayout::moreAt(const QPointF& point) const {
    const auto found =
        std::ranges::find_if(m_more, [&](const More& more) { return more.place.contains(point); });
    return found == m_more.end() ? nullptr : &*found;
}

const AgendaLayout::Day* AgendaLayout::dayAt(const QPointF& point) const {
    const auto found =
        std::ranges::find_if(m_days, [&](const Day& day) { return day.place.contains(point); });
    return found == m_days.end() ? nullptr : &*found;
}

std::optional<WallClock> AgendaLayout::timeAt(const QPointF& point, const WallClock& when) const {
    // A run that is held at its lower end may be pulled above the day's first hour.
    const double x = point.x();
    const double y =
        m_view == AgendaView::Month ? point.y() : std::clamp(point.y(), 0.0, m_hour * 24 - 0.001);
    const Day* day = dayAt({x, y});
    if (!day) return {};
    if (m_view == AgendaView::Month) return WallClock(day->date, when.time());
    const qint64 seconds = std::min(qint64(std::round(y / m_hour * 3600)), secondsOfDay - 1);
    return WallClock(day->date, QTime(0, 0)).addSecs(seconds);
}

std::optional<QRectF> AgendaLayout::placeAt(const WallClock& start, qint64 seconds) const {
    const auto day = std::ranges::find(m_days, start.date(), &Day::date);
    if (day == m_days.end()) return {};
    if (m_view != AgendaView::Month) return columnPlace(*day, start, seconds).adjusted(2, 0, -2, 0);
    return QRectF(day->place.left() + 2, day->place.center().y(), day->place.width() - 4, m_sizes.line * 1.1);
}

double AgendaLayout::yOf(QTime time) const {
    return time.msecsSinceStartOfDay() / 3.6e6 * m_hour;
}
