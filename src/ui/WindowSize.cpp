#include "ui/WindowSize.h"

#include <QScreen>
#include <QWidget>

void resizeToText(QWidget& window, int letters, int lines) {
    const QFontMetrics metrics = window.fontMetrics();
    const QSize wanted(metrics.averageCharWidth() * letters, metrics.height() * lines);
    window.resize(wanted.boundedTo(window.screen()->availableSize() * 0.95));
}
