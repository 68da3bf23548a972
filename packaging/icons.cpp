#include "ui/Logo.h"

#include <QDir>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QSvgGenerator>
#include <cstdlib>

namespace {

bool writePicture(const QString& path, int side) {
    QImage picture(side, side, QImage::Format_ARGB32);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    paintProgramIcon(painter, side);
    painter.end();
    return picture.save(path);
}

bool writeDrawing(const QString& path) {
    constexpr int side = 128;
    QSvgGenerator drawing;
    drawing.setFileName(path);
    drawing.setTitle("Scheduler");
    drawing.setSize({side, side});
    drawing.setViewBox(QRect(0, 0, side, side));
    QPainter painter;
    if (!painter.begin(&drawing)) return false;
    paintProgramIcon(painter, side);
    return painter.end();
}

} // namespace

/// Writes the program's icon into a folder that is laid out as an icon theme, as a drawing and in the given
/// sizes: zelvan-scheduler-icons <folder> <side>...
int main(int argc, char* argv[]) {
    qputenv("QT_QPA_PLATFORM", "offscreen"); // has the light colours, and a build has no display
    const QGuiApplication application(argc, argv);
    const QDir theme(application.arguments().value(1));
    const auto file = [&](const QString& folder, const QString& ending) {
        theme.mkpath(folder + "/apps");
        return theme.filePath(folder + "/apps/zelvan-scheduler." + ending);
    };
    bool written = writeDrawing(file("scalable", "svg"));
    for (const QString& side : application.arguments().mid(2))
        written = writePicture(file(QString("%1x%1").arg(side), "png"), side.toInt()) && written;
    return written ? EXIT_SUCCESS : EXIT_FAILURE;
}
