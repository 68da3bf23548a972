#include "schedules/uctAgendaPainter.h"

#include "schedules/uctStatusIcon.h"
#include "ui/Palette.h"

#include <QFontMetricsF>
#include <QGuiApplication>
#include <QLocale>
#include <QPainter>
#include <QPalette>
#include <algorithm>
#include <span>

namespace {

QColor colour(QPalette::ColorRole role) {
    return QGuiApplication::palette().color(role);
}

QColor faint(QColor colour, int alpha) {
    colour.setAlpha(alpha);
    return colour;
}

QString timeText(const WallClock& when) {
    return when.time().toString("HH:mm");
}

QString runsText(int runs) {
    return runs == 1 ? QString("1 run") : QString("%1 runs").arg(runs);
}

/// The name of a day above a month, and those above a column from the longest to the shortest.
QStringList dayForms(const AgendaLayout::Day& day) {
    const QString date = QLocale::c().toString(day.date, "ddd d MMM");
    return {QLocale::c().toString(day.date, "dddd"),
            day.runs > 0 ? date + "  (" + runsText(day.runs) + ')' : date, date,
            QLocale::c().toString(day.date, "ddd d")};
}

} // namespace

QString drawable(QString text) {
    for (QChar& letter : text)
        if (letter.category() == QChar::Other_Control) letter = ' ';
    return text;
}

uctAgendaPainter::uctAgendaPainter(QPainter& painter, const AgendaLayout& layout,
                                   const std::vector<AgendaRun>& runs)
    : m_painter(painter), m_layout(layout), m_runs(runs) {
    m_painter.setRenderHint(QPainter::Antialiasing);
}

double uctAgendaPainter::widthOf(const QString& text) const {
    return QFontMetricsF(m_painter.font(), m_painter.device()).horizontalAdvance(text);
}

/// Cut with dots rather than by a clip, which not every paint device knows.
void uctAgendaPainter::paintText(const QRectF& place, const QString& text, int flags) {
    const QFontMetricsF metrics(m_painter.font(), m_painter.device());
    const QString shown = metrics.elidedText(drawable(text), Qt::ElideRight, place.width());
    m_painter.drawText(place, flags | Qt::AlignVCenter | Qt::TextSingleLine, shown);
}

void uctAgendaPainter::paintHeader(double height) {
    m_painter.fillRect(QRectF(0, 0, m_layout.size().width(), height), colour(QPalette::Button));
    m_painter.setPen(colour(QPalette::ButtonText));
    const std::span days(m_layout.days().data(), isMonth() ? 7 : m_layout.days().size());
    const double room = days.front().place.width() - 8;
    int form = isMonth() ? 0 : 1; // the longest one in which all find room
    const auto fits = [&](const AgendaLayout::Day& day) { return widthOf(dayForms(day)[form]) <= room; };
    while (!isMonth() && form < 3 && !std::ranges::all_of(days, fits)) ++form;
    for (const AgendaLayout::Day& day : days)
        paintText({day.place.left() + 4, 0, room, height}, dayForms(day)[form], Qt::AlignHCenter);
    m_painter.setPen(Palette::frameLine().darker(115));
    m_painter.drawLine(QPointF(0, height - 0.5), QPointF(m_layout.size().width(), height - 0.5));
}

void uctAgendaPainter::paintDays(const AgendaMarks& marks, const QRectF& visible) {
    m_painter.fillRect(visible, colour(QPalette::Base));
    for (const AgendaLayout::Day& day : m_layout.days()) {
        if (!day.place.intersects(visible)) continue;
        if (isMonth())
            paintMonthDay(day, marks);
        else if (day.date == marks.now.date())
            m_painter.fillRect(day.place & visible, faint(colour(QPalette::Highlight), 24));
    }
    if (!isMonth()) {
        paintHours(visible);
        paintNow(marks.now); // below the runs: their titles are to be read
    }
    for (const AgendaLayout::Item& item : m_layout.items())
        if (item.place.intersects(visible)) paintItem(item, marks.selected == item.run);
    for (const AgendaLayout::More& more : m_layout.more())
        if (more.place.intersects(visible)) paintMore(more);
    if (marks.ghost) paintGhost(*marks.ghost);
}

/// The more runs a day has, compared with the busiest one shown, the stronger its colour; the number is
/// written as well.
void uctAgendaPainter::paintMonthDay(const AgendaLayout::Day& day, const AgendaMarks& marks) {
    if (day.runs > 0)
        m_painter.fillRect(day.place,
                           faint(colour(QPalette::Highlight), 12 + 68 * day.runs / m_layout.busiest()));
    m_painter.setPen(Palette::frameLine());
    m_painter.setBrush(Qt::NoBrush);
    m_painter.drawRect(day.place);
    const bool today = day.date == marks.now.date();
    if (today) {
        m_painter.setPen(QPen(colour(QPalette::Highlight), 2));
        m_painter.drawRect(day.place.adjusted(1, 1, -1, -1));
    }
    QRectF top(day.place.left() + 4, day.place.top(), day.place.width() - 8, line() * 1.2);
    m_painter.setPen(day.within ? colour(QPalette::Text) : Palette::subtleText());
    if (day.runs > 0) {
        const QString runs = runsText(day.runs);
        paintText(top, runs, Qt::AlignRight);
        top.adjust(0, 0, -widthOf(runs) - 4, 0);
    }
    const QString date = QLocale::c().toString(day.date, day.within ? "d" : "d MMM");
    const bool named = today && widthOf(date + " Today") <= top.width();
    paintText(top, named ? date + " Today" : date);
}

void uctAgendaPainter::paintHours(const QRectF& visible) {
    for (int hour = 0; hour < 24; ++hour) {
        const double y = hour * m_layout.hour();
        if (y + m_layout.hour() < visible.top() || y > visible.bottom()) continue;
        m_painter.setPen(Palette::frameLine());
        m_painter.drawLine(QPointF(m_layout.sizes().gutter, y), QPointF(m_layout.size().width(), y));
        m_painter.setPen(Palette::subtleText());
        paintText({2, y, m_layout.sizes().gutter - 6, line() * 1.1},
                  QString("%1:00").arg(hour, 2, 10, QChar('0')), Qt::AlignRight);
    }
    m_painter.setPen(Palette::frameLine().darker(115));
    for (const AgendaLayout::Day& day : m_layout.days())
        m_painter.drawLine(QPointF(day.place.left(), visible.top()),
                           QPointF(day.place.left(), std::min(visible.bottom(), day.place.bottom())));
}

void uctAgendaPainter::paintNow(const WallClock& now) {
    for (const AgendaLayout::Day& day : m_layout.days()) {
        if (day.date != now.date()) continue;
        const double y = m_layout.yOf(now.time());
        m_painter.setPen(QPen(Palette::problem(), 2));
        m_painter.drawLine(QPointF(day.place.left(), y), QPointF(day.place.right(), y));
        m_painter.setBrush(Palette::problem());
        m_painter.drawEllipse(QPointF(day.place.left(), y), 3, 3);
    }
}

void uctAgendaPainter::paintItem(const AgendaLayout::Item& item, bool selected) {
    const AgendaRun& run = m_runs[item.run];
    paintBlock(run, item, selected);
    const double side = line() * 0.85;
    const QRectF first(item.place.left() + 7, item.place.top(), item.place.width() - 9,
                       std::min(item.place.height(), line() * 1.1));
    const QRectF mark(first.left(), first.center().y() - side / 2, side, side);
    const QIcon icon = statusIcon(run.schedule.status, run.delayed);
    const double scale = m_painter.device()->devicePixelRatioF();
    m_painter.drawPixmap(mark.toRect(), icon.pixmap(QSize(int(side), int(side)), scale,
                                                    selected ? QIcon::Selected : QIcon::Normal));
    m_painter.setPen(colour(selected ? QPalette::HighlightedText : QPalette::Text));
    const QString when = item.fromBefore ? "…" : timeText(run.start);
    const QRectF words = first.adjusted(side + 4, 0, 0, 0);
    if (words.width() >= widthOf("00:…")) paintText(words, when + ' ' + run.schedule.title);
}

void uctAgendaPainter::paintBlock(const AgendaRun& run, const AgendaLayout::Item& item, bool selected) {
    const QRectF place = item.place.adjusted(0.5, 0.5, -0.5, -0.5);
    const QColor status = statusColour(run.schedule.status, run.delayed);
    const QColor edge = selected ? colour(QPalette::Highlight) : status;
    m_painter.setPen(Qt::NoPen);
    m_painter.setBrush(colour(QPalette::Base));
    m_painter.drawRect(place);
    m_painter.setBrush(selected ? colour(QPalette::Highlight) : faint(status, 48));
    m_painter.drawRect(place);
    m_painter.setBrush(Qt::NoBrush);
    const bool estimated = run.length == AgendaRun::Estimated && !isMonth();
    if (estimated) {
        m_painter.setPen(QPen(selected ? colour(QPalette::HighlightedText) : faint(status, 120), 1));
        paintHatching(place);
    }
    m_painter.setPen(QPen(edge, 1, estimated ? Qt::DashLine : Qt::SolidLine));
    const bool open = run.length == AgendaRun::Unknown || run.length == AgendaRun::SoFar || item.intoNext;
    if (open && !isMonth())
        m_painter.drawPolyline(
            QPolygonF({place.bottomLeft(), place.topLeft(), place.topRight(), place.bottomRight()}));
    else
        m_painter.drawRect(place);
    m_painter.fillRect(QRectF(item.place.left(), item.place.top(), 4, item.place.height()), status);
}

/// Slanting lines, below the text.
void uctAgendaPainter::paintHatching(const QRectF& place) {
    const QRectF room = place.adjusted(4, std::min(place.height(), line() * 1.1), 0, 0);
    const double height = room.height();
    const double gap = line() / 2;
    for (int i = 0; i * gap < room.width() + height; ++i) {
        const double x = i * gap;
        const double over = std::max(0.0, x - room.width());
        const double under = std::max(0.0, height - x);
        m_painter.drawLine(QPointF(room.left() + x - over, room.top() + over),
                           QPointF(room.left() + x - height + under, room.bottom() - under));
    }
}

void uctAgendaPainter::paintMore(const AgendaLayout::More& more) {
    m_painter.setPen(QPen(Palette::subtleText(), 1, Qt::DotLine));
    m_painter.setBrush(colour(QPalette::Base));
    m_painter.drawRect(more.place.adjusted(0.5, 0.5, -0.5, -0.5));
    m_painter.setPen(colour(QPalette::Text));
    const QRectF place(more.place.left() + 4, more.place.top(), more.place.width() - 6, line() * 1.1);
    const QString text = QString("+%1 more").arg(more.runs);
    paintText(place, widthOf(text) <= place.width() ? text : QString("+%1").arg(more.runs));
}

void uctAgendaPainter::paintGhost(const AgendaMarks::Ghost& ghost) {
    const AgendaRun& run = m_runs[ghost.run];
    const std::optional<QRectF> place = m_layout.placeAt(ghost.when, run.seconds);
    if (!place) return;
    const QColor edge = ghost.allowed ? colour(QPalette::Highlight) : Palette::problem();
    m_painter.setPen(QPen(edge, 2, Qt::DashLine));
    m_painter.setBrush(faint(colour(QPalette::Base), 230));
    m_painter.drawRect(*place);
    m_painter.setPen(colour(QPalette::Text));
    QFont bold = m_painter.font();
    const QFont font = bold;
    bold.setBold(true);
    m_painter.setFont(bold);
    const QString text = ghost.allowed ? timeText(ghost.when) : timeText(ghost.when) + " is past";
    paintText({place->left() + 5, place->top(), place->width() - 7, line() * 1.1},
              text + ' ' + run.schedule.title);
    m_painter.setFont(font);
}
