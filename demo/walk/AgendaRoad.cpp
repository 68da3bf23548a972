#include "demo/walk/AgendaRoad.h"

#include "demo/walk/Controls.h"
#include "schedules/uctAgenda.h"

#include <QCoreApplication>
#include <QMouseEvent>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTimer>
#include <memory>

namespace {

uctAgenda& agenda(QWidget& screen) {
    return control<uctAgenda>(screen, "agenda");
}

int runOf(QWidget& screen, const QString& title) {
    for (const AgendaRun& run : agenda(screen).runs())
        if (run.schedule.title == title) return run.id();
    missingControl(screen, "run " + title);
}

/// To another hour of its day, which the agenda shows. The question about it comes with the release.
void drag(QWidget& screen, const QString& title) {
    uctAgenda& drawing = agenda(screen);
    const AgendaRun* run = drawing.runOf(runOf(screen, title));
    const qint64 hours = run->start.time().hour() < 12 ? 3 : -3;
    const auto pointAt = [&](const WallClock& when) {
        const QPointF place = drawing.layOut().placeAt(when, 0)->center();
        return QPointF(place.x(), place.y() + drawing.headerHeight() - drawing.verticalScrollBar()->value());
    };
    const QPointF from = pointAt(run->start);
    const QPointF to = pointAt(run->start.addSecs(hours * 3600));
    QWidget* canvas = drawing.viewport();
    const auto send = [canvas](QEvent::Type type, const QPointF& point, Qt::MouseButton button) {
        QMouseEvent event(type, point, canvas->mapToGlobal(point), button, Qt::LeftButton, {});
        QCoreApplication::sendEvent(canvas, &event);
    };
    send(QEvent::MouseButtonPress, from, Qt::LeftButton);
    send(QEvent::MouseMove, (from + to) / 2, Qt::NoButton);
    send(QEvent::MouseMove, to, Qt::NoButton);
    QTimer::singleShot(0, canvas, [=] { send(QEvent::MouseButtonRelease, to, Qt::LeftButton); });
}

Walker::Ready exists(const QString& path) {
    return on("frmAgenda", [path](QWidget&) { return QFile::exists(path); });
}

} // namespace

void planAgenda(Walker& walker) {
    const QString title = "March Management Pack";
    const auto folder = std::make_shared<QTemporaryDir>(); // for what is saved
    const QString picture = folder->filePath("agenda.png");
    const QString calendar = folder->filePath("agenda.ics");
    walker.add("open the agenda", on("frmMainScreen"), press("cmdAgenda"));
    walker.add("see the agenda", on("frmAgenda"), [](QWidget& screen) { screen.resize(1000, 620); });
    walker.add("see the week", on("frmAgenda"), press("optMonth"));
    walker.add("see the month", on("frmAgenda"), [=](QWidget& screen) {
        agenda(screen).selectId(runOf(screen, title), true);
        press("cmdMove")(screen);
    });
    walker.add("look at its time", on("frmAgendaMove"),
               [](QWidget& screen) { QTimer::singleShot(0, &screen, &QWidget::close); });
    walker.add("see its day", on("frmAgenda"), press("optDay"));
    walker.add("drag it", on("frmAgenda"), [=](QWidget& screen) { drag(screen, title); });
    walker.add("confirm the move", onMessage("Do you want to run the schedule"), answer("&Yes"));
    walker.add("see it moved", on("frmAgenda"), press("cmdSavePicture"));
    walker.add("save a picture", on("QFileDialog"), chooseFile(picture));
    walker.add("save the runs", exists(picture), press("cmdSaveCalendar"));
    walker.add("save a calendar", on("QFileDialog"), chooseFile(calendar));
    walker.add("leave the agenda", exists(calendar), [folder](QWidget& screen) { press("cmdExit")(screen); });
}
