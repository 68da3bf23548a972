#pragma once

#include "schedules/AgendaRun.h"

#include <QRectF>
#include <vector>

enum class AgendaView { Month, Week, Day };

/// Days that follow each other.
struct AgendaDays {
    QDate first;
    int count = 1;

    QDate last() const { return first.addDays(count - 1); }
    bool contains(QDate day) const { return day >= first && day <= last(); }
};

/// The days that a view shows around a day: a month in whole weeks, from Monday to Sunday.
AgendaDays shownDays(AgendaView view, QDate day);
/// The day that many views later; the same day of another month, or its last one.
QDate turned(AgendaView view, QDate day, int views);
/// "November 2026", "16 Nov 2026 to 22 Nov 2026", "Monday, 16 November 2026".
QString daysText(AgendaView view, QDate day);

/// The sizes that a layout goes by, in the units of its picture.
struct AgendaSizes {
    double width = 0;
    double height = 0; ///< that the days may use; hours take no less than two lines each
    double line = 0;   ///< of text
    double gutter = 0; ///< for the hours, at the left
};

/// Where days and runs stand in the picture of a view. In month view a day is a box with its runs as lines,
/// in the others a column of 24 hours in which runs that meet stand side by side. What finds no room is
/// counted.
class AgendaLayout {
public:
    struct Day {
        QDate date;
        QRectF place;
        int runs = 0;       ///< that begin on it
        bool within = true; ///< of the month, in month view
    };
    struct Item {
        std::size_t run = 0; ///< place in the runs
        QRectF place;
        bool fromBefore = false; ///< began on an earlier day
        bool intoNext = false;   ///< goes on after midnight
    };
    /// Runs of a day without room.
    struct More {
        QDate date;
        QRectF place;
        int runs = 0;
    };

    AgendaLayout() = default;
    /// `runs` in the order of their start.
    AgendaLayout(AgendaView view, QDate day, const std::vector<AgendaRun>& runs, const AgendaSizes& sizes);

    AgendaView view() const { return m_view; }
    const AgendaSizes& sizes() const { return m_sizes; }
    QSizeF size() const;
    double hour() const { return m_hour; } ///< its height; 0 in month view
    const std::vector<Day>& days() const { return m_days; }
    const std::vector<Item>& items() const { return m_items; }
    const std::vector<More>& more() const { return m_more; }
    int busiest() const; ///< the most runs of a day

    const Item* itemAt(const QPointF& point) const;
    const Item* itemOf(std::size_t run) const;
    const More* moreAt(const QPointF& point) const;
    const Day* dayAt(const QPointF& point) const;
    /// The time at a point, to the second; in month view that of `when` on the point's day. Nothing beside
    /// the days.
    std::optional<WallClock> timeAt(const QPointF& point, const WallClock& when) const;
    /// Where a run would stand alone; nothing on another day.
    std::optional<QRectF> placeAt(const WallClock& start, qint64 seconds) const;
    double yOf(QTime time) const;

private:
    using Places = std::vector<std::size_t>;
    void layMonth(const std::vector<AgendaRun>& runs, QDate day);
    void layLines(const Day& day, const Places& runs);
    void layColumns(const std::vector<AgendaRun>& runs);
    void layColumn(const Day& day, const std::vector<AgendaRun>& runs, const Places& places);
    void spread(const Day& day, std::vector<Item>& group, std::vector<int>& lanes, int laneCount);
    QRectF columnPlace(const Day& day, const WallClock& start, qint64 seconds) const;

    AgendaView m_view = AgendaView::Week;
    AgendaSizes m_sizes;
    double m_hour = 0;
    std::vector<Day> m_days;
    std::vector<Item> m_items;
    std::vector<More> m_more;
};

/// A time on the next quarter of an hour.
WallClock snapped(const WallClock& when);
