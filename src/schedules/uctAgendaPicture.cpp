#include "schedules/uctAgendaPicture.h"

#include "schedules/uctAgenda.h"
#include "schedules/uctAgendaPainter.h"

#include <QBuffer>
#include <QImage>
#include <QPainter>
#ifdef SCHEDULER_SVG
#include <QSvgGenerator>
#endif

namespace {

constexpr double dotsPerUnit = 2; // sharp in print

double titleHeight(const uctAgenda& agenda) {
    return agenda.fontMetrics().height() * 2;
}

QSize sizeOf(const uctAgenda& agenda) {
    return (agenda.wholeSize() + QSizeF(0, titleHeight(agenda))).toSize();
}

void paint(QPaintDevice& device, const uctAgenda& agenda, const QString& title) {
    QPainter painter(&device);
    const QRectF top(8, 0, sizeOf(agenda).width() - 16, titleHeight(agenda));
    painter.fillRect(QRectF(QPointF(), sizeOf(agenda)), agenda.palette().window());
    QFont bold = agenda.font();
    bold.setBold(true);
    painter.setFont(bold);
    painter.setPen(agenda.palette().color(QPalette::WindowText));
    painter.drawText(
        top, Qt::AlignVCenter | Qt::TextSingleLine,
        agenda.fontMetrics().elidedText(drawable(title), Qt::ElideRight, int(top.width() * 0.9)));
    painter.translate(0, titleHeight(agenda));
    agenda.paintWhole(painter);
}

} // namespace

QByteArray agendaAsPng(const uctAgenda& agenda, const QString& title) {
    QImage image(sizeOf(agenda) * dotsPerUnit, QImage::Format_RGB32);
    if (image.isNull()) return {};
    image.setDotsPerMeterX(int(agenda.logicalDpiX() / 0.0254));
    image.setDotsPerMeterY(int(agenda.logicalDpiY() / 0.0254));
    image.setDevicePixelRatio(dotsPerUnit);
    paint(image, agenda, title);
    QByteArray content;
    QBuffer file(&content);
    return image.save(&file, "PNG") ? content : QByteArray();
}

#ifdef SCHEDULER_SVG
QByteArray agendaAsSvg(const uctAgenda& agenda, const QString& title) {
    QByteArray content;
    QBuffer file(&content);
    QSvgGenerator generator;
    generator.setOutputDevice(&file);
    generator.setSize(sizeOf(agenda));
    generator.setViewBox(QRect(QPoint(), sizeOf(agenda)));
    generator.setResolution(agenda.logicalDpiX());
    generator.setTitle(drawable(title).toHtmlEscaped()); // it is written as it stands
    paint(generator, agenda, title);
    return content;
}
#endif
