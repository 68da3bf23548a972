#include "schedules/uctStatusIcon.h"

#include <QGuiApplication>
#include <QPainter>
#include <QPalette>

namespace {

constexpr int side = 64;
constexpr QRectF disc(6, 6, 52, 52);

void drawClock(QPainter& painter) {
    painter.drawEllipse(disc);
    painter.drawPolyline(QPolygonF({{32, 16}, {32, 33}, {44, 42}}));
}

void drawWarning(QPainter& painter) {
    painter.drawPolygon(QPolygonF({{32, 7}, {59, 56}, {5, 56}}));
    painter.drawLine(32, 26, 32, 39);
    painter.drawPoint(32, 48);
}

void drawArrow(QPainter& painter) {
    painter.setBrush(painter.pen().color());
    painter.drawPolygon(QPolygonF({{16, 9}, {54, 32}, {16, 55}}));
}

void drawBarredDisc(QPainter& painter) {
    painter.drawEllipse(disc);
    painter.drawLine(15, 49, 49, 15);
}

void drawTick(QPainter& painter) {
    painter.drawPolyline(QPolygonF({{9, 35}, {25, 51}, {55, 14}}));
}

void drawCross(QPainter& painter) {
    painter.drawLine(13, 13, 51, 51);
    painter.drawLine(13, 51, 51, 13);
}

/// In colours that are seen on light and on dark rows.
QIcon drawn(const char* colour, void (*draw)(QPainter&)) {
    const auto pixmap = [draw](const QColor& pen) {
        QPixmap mark(side, side);
        mark.fill(Qt::transparent);
        QPainter painter(&mark);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(pen, 7, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        draw(painter);
        return mark;
    };
    QIcon icon(pixmap(QColor(QLatin1StringView(colour))));
    icon.addPixmap(pixmap(QGuiApplication::palette().color(QPalette::HighlightedText)), QIcon::Selected);
    return icon;
}

} // namespace

QIcon statusIcon(ScheduleStatus status, bool delayed) {
    using enum ScheduleStatus;
    static const QIcon pending = drawn("#6f7d88", drawClock);
    static const QIcon overdue = drawn("#d98200", drawWarning);
    static const QIcon disabled = drawn("#98a2aa", drawBarredDisc);
    static const QIcon processing = drawn("#2f86c6", drawArrow);
    static const QIcon failed = drawn("#d0463b", drawCross);
    static const QIcon done = drawn("#2e9a57", drawTick);
    switch (status) {
    case Disabled:
        return disabled;
    case Processing:
        return processing;
    case CompletedWithErrors:
        return failed;
    case Completed:
        return done;
    default:
        return delayed ? overdue : pending;
    }
}
