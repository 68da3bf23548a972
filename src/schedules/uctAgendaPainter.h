#pragma once

#include "schedules/AgendaLayout.h"

class QPainter;

/// What stands over the runs.
struct AgendaMarks {
    /// A run that is being moved.
    struct Ghost {
        std::size_t run = 0;
        WallClock when;
        bool allowed = true;
    };

    WallClock now;
    std::optional<std::size_t> selected;
    std::optional<Ghost> ghost;
};

/// In one line, and without what no text of a drawing may hold.
QString drawable(QString text);

/// Draws an agenda by its layout, in the program's colours and the painter's font; on the screen and into
/// files alike. Each status has its mark beside its colour. A run whose length is estimated is hatched and
/// dashed, one of which no length is known stays open at its end.
class uctAgendaPainter {
public:
    uctAgendaPainter(QPainter& painter, const AgendaLayout& layout, const std::vector<AgendaRun>& runs);

    /// The names of the days, above them.
    void paintHeader(double height);
    /// Of the days and runs only what `visible` touches.
    void paintDays(const AgendaMarks& marks, const QRectF& visible);

private:
    void paintMonthDay(const AgendaLayout::Day& day, const AgendaMarks& marks);
    void paintHours(const QRectF& visible);
    void paintNow(const WallClock& now);
    void paintItem(const AgendaLayout::Item& item, bool selected);
    void paintBlock(const AgendaRun& run, const AgendaLayout::Item& item, bool selected);
    void paintHatching(const QRectF& place);
    void paintMore(const AgendaLayout::More& more);
    void paintGhost(const AgendaMarks::Ghost& ghost);
    void paintText(const QRectF& place, const QString& text, int flags = 0);
    double widthOf(const QString& text) const;
    double line() const { return m_layout.sizes().line; }
    bool isMonth() const { return m_layout.view() == AgendaView::Month; }

    QPainter& m_painter;
    const AgendaLayout& m_layout;
    const std::vector<AgendaRun>& m_runs;
};
