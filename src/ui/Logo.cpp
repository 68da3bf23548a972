#include "ui/Logo.h"

#include "ui/Palette.h"

#include <QPainter>

void paintLogo(QPainter& painter, const QRectF& place, double phase) {
    const double bar = place.width() / 5;
    painter.setPen(Qt::NoPen);
    painter.setBrush(Palette::headerText());
    for (int i = 0; i < 3; ++i) {
        const double height = place.height() * (0.25 + 0.17 * i);
        painter.drawRoundedRect(QRectF(place.left() + bar * 1.5 * i, place.bottom() - height, bar, height),
                                1.5, 1.5);
    }
    painter.setBrush(Qt::NoBrush);
    for (int i = 0; i < 3; ++i) {
        const double strength = qBound(0.0, phase * 3 - i, 1.0);
        QColor colour = Palette::headerText();
        colour.setAlphaF(float(strength * (1.0 - 0.2 * i)));
        painter.setPen(QPen(colour, place.width() / 14, Qt::SolidLine, Qt::RoundCap));
        const double radius = place.width() * (0.16 + 0.17 * i);
        const QPointF centre(place.left() + bar * 0.5, place.top() + place.height() * 0.55);
        painter.drawArc(QRectF(centre.x() - radius, centre.y() - radius, 2 * radius, 2 * radius), 15 * 16,
                        60 * 16);
    }
}

void paintProgramIcon(QPainter& painter, int side) {
    painter.scale(side / 32.0, side / 32.0);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Palette::headerFrom());
    painter.drawRoundedRect(QRectF(0, 0, 32, 32), 5.5, 5.5);
    paintLogo(painter, QRectF(6.4, 3, 24, 25));
}

QIcon programIcon() {
    QIcon icon;
    for (const int side : {16, 22, 24, 32, 48, 64, 128}) {
        QPixmap picture(side, side);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        paintProgramIcon(painter, side);
        painter.end();
        icon.addPixmap(picture);
    }
    return icon;
}
