#include "ui/Icons.h"

#include <QGuiApplication>
#include <QPainter>
#include <QPalette>

namespace {

QIcon initialOf(const QString& name) {
    QPixmap mark(32, 32);
    mark.fill(Qt::transparent);
    QPainter painter(&mark);
    QFont font = painter.font();
    font.setPixelSize(20);
    painter.setFont(font);
    painter.setPen(QGuiApplication::palette().color(QPalette::ButtonText));
    painter.drawText(mark.rect(), Qt::AlignCenter, name.left(1).toUpper());
    return QIcon(mark);
}

} // namespace

QIcon icon(const QString& name) {
    const QIcon themed = QIcon::fromTheme(name);
    if (!themed.isNull()) return themed;
    // A program without a theme, as of a test, has none of them.
    if (QIcon::themeName().startsWith("breeze"))
        qWarning("The program carries no icon %s.", qPrintable(name));
    return initialOf(name);
}

QIcon rowIcon(const QString& name) {
    constexpr int size = 32;
    QIcon both;
    QPixmap mark = icon(name).pixmap(size);
    both.addPixmap(mark, QIcon::Normal);
    QPainter painter(&mark);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(mark.rect(), QGuiApplication::palette().color(QPalette::HighlightedText));
    painter.end();
    both.addPixmap(mark, QIcon::Selected);
    return both;
}
