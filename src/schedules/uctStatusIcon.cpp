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

QIcon drawn(const QColor& colour, void (*draw)(QPainter&)) {
    const auto pixmap = [draw](const QColor& pen) {
        QPixmap mark(side, side);
        mark.fill(Qt::transparent);
        QPainter painter(&mark);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(pen, 7, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        draw(painter);
        return mark;
    };
    QIcon icon(pixmap(colour));
    icon.addPixmap(pixmap(QGuiApplication::palette().color(QPalette::HighlightedText)), QIcon::Selected);
    return icon;
}

} // namespace

QColor statusColour(ScheduleStatus status, bool delayed) {
    using enum ScheduleStatus;
    switch (status) {
    case Disabled:
        return QColor("#98a2aa");
    case Processing:
        return QColor("#2f86c6");
    case CompletedWithErrors:
        return QColor("#d0463b");
    case Completed:
        return QColor("#2e9a57");
    default:
        return QColor(delayed ? "#d98200" : "#6f7d88");
    }
}

QIcon statusIcon(ScheduleStatus status, bool delayed) {
    using enum ScheduleStatus;
    static const QIcon pending = drawn(statusColour(Pending, false), drawClock);
    static const QIcon overdue = drawn(statusColour(Pending, true), drawWarning);
    static const QIcon disabled = drawn(statusColour(Disabled, false), drawBarredDisc);
    static const QIcon processing = drawn(statusColour(Processing, false), drawArrow);
    static const QIcon failed = drawn(statusColour(CompletedWithErrors, false), drawCross);
    static const QIcon done = drawn(statusColour(Completed, false), drawTick);
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
