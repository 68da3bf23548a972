#include "schedules/uctAgenda.h"

#include "schedules/uctAgendaPainter.h"
#include "ui/Palette.h"

#include <QApplication>
#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QToolTip>
#include <algorithm>
#include <chrono>
#include <cmath>

namespace {

constexpr std::chrono::milliseconds scrollPace(40);
constexpr qint64 quarter = 900; // seconds

} // namespace

uctAgenda::uctAgenda(QWidget* parent) : QAbstractScrollArea(parent), m_day(QDate::currentDate()) {
    setFocusPolicy(Qt::StrongFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    viewport()->setMouseTracking(true); // a move without a button tells that its release was lost
    m_scrolls.setInterval(scrollPace);
    connect(&m_scrolls, &QTimer::timeout, this, &uctAgenda::scrollWhileDragging);
    setMinimumSize(fontMetrics().averageCharWidth() * 40, fontMetrics().height() * 8);
}

double uctAgenda::headerHeight() const {
    return fontMetrics().height() * 1.5;
}

QPointF uctAgenda::content(const QPoint& position) const {
    return {double(position.x()), position.y() - headerHeight() + verticalScrollBar()->value()};
}

void uctAgenda::lay() {
    const double room = viewport()->height() - headerHeight();
    m_layout = AgendaLayout(m_view, m_day, m_runs,
                            {double(viewport()->width()), room, double(fontMetrics().height()),
                             fontMetrics().horizontalAdvance("00:00") + 12.0});
    verticalScrollBar()->setRange(0, std::max(0, int(std::ceil(m_layout.size().height() - room))));
    verticalScrollBar()->setPageStep(int(room));
    verticalScrollBar()->setSingleStep(fontMetrics().height());
    viewport()->update();
}

void uctAgenda::setRuns(std::vector<AgendaRun> runs) {
    const auto held = m_move;
    const AgendaRun* const before = held ? runOf(held->id) : nullptr;
    const QString title = before ? before->schedule.title : QString();
    m_runs = std::move(runs);
    const AgendaRun* const now = held ? runOf(held->id) : nullptr;
    const bool lost = held && (!now || !now->isMovable() || now->start != held->from);
    if (lost) endMove();
    lay();
    dropSelection([this] { return !runOf(*m_selected); });
    tellSelected();
    if (lost && held->begun) emit moveLost(title);
}

std::optional<std::size_t> uctAgenda::placeOf(int id) const {
    const auto found = std::ranges::find(m_runs, id, &AgendaRun::id);
    return found == m_runs.end() ? std::nullopt : std::optional(std::size_t(found - m_runs.begin()));
}

const AgendaRun* uctAgenda::runOf(int id) const {
    const auto place = placeOf(id);
    return place ? &m_runs[*place] : nullptr;
}

void uctAgenda::showDays(AgendaView view, QDate day) {
    const bool otherView = view != m_view || m_layout.days().empty();
    m_view = view;
    m_day = day;
    lay();
    if (otherView) scrollToWork();
    if (m_move) return; // it may be moved to days where it is not yet
    dropSelection([this] { return !days().contains(runOf(*m_selected)->start.date()); });
}

void uctAgenda::dropSelection(const std::function<bool()>& isOutOfSight) {
    if (!m_selected || !isOutOfSight()) return;
    m_selected.reset();
    tellSelected();
    emit selectedIdChanged();
}

/// To the present, or to the hours in which people work.
void uctAgenda::scrollToWork() {
    const WallClock now = WallClock::now();
    const int hour = days().contains(now.date()) ? std::max(0, now.time().hour() - 2) : 7;
    verticalScrollBar()->setValue(int(m_layout.yOf(QTime(hour, 0))));
}

/// By the user, here.
void uctAgenda::turnTo(AgendaView view, QDate day) {
    showDays(view, day);
    emit daysChanged();
}

bool uctAgenda::selectId(int id, bool turn) {
    const std::optional<std::size_t> place = placeOf(id);
    if (!place) return false;
    const bool changes = m_selected != id;
    m_selected = id;
    if (turn && !days().contains(m_runs[*place].start.date())) turnTo(m_view, m_runs[*place].start.date());
    const AgendaLayout::Item* item = m_layout.itemOf(*place);
    if (turn) showPlace(item ? item->place : m_layout.placeAt(m_runs[*place].start, 0));
    viewport()->update();
    tellSelected();
    if (changes) emit selectedIdChanged();
    return true;
}

/// For those who do not see it.
void uctAgenda::tellSelected() {
    const AgendaRun* run = m_selected ? runOf(*m_selected) : nullptr;
    setAccessibleDescription(
        run ? QString("%1, %2, %3").arg(run->schedule.title, run->start.shown(), run->status) : QString());
}

void uctAgenda::showPlace(const std::optional<QRectF>& place) {
    if (!place) return;
    QScrollBar& bar = *verticalScrollBar();
    const double line = fontMetrics().height() * 2;
    const double bottom = std::min(place->bottom(), place->top() + line) - bar.pageStep() + line;
    if (place->top() < bar.value() + line) bar.setValue(int(place->top() - line));
    if (bottom > bar.value()) bar.setValue(int(bottom));
}

AgendaMarks uctAgenda::marks() const {
    AgendaMarks marks{WallClock::now(), m_selected ? placeOf(*m_selected) : std::nullopt, {}};
    if (!m_move || !m_move->begun || !m_move->when) return marks;
    if (const auto place = placeOf(m_move->id))
        marks.ghost = {*place, *m_move->when, m_move->when->date() >= marks.now.date()};
    return marks;
}

void uctAgenda::paintEvent(QPaintEvent*) {
    QPainter painter(viewport());
    painter.setFont(font());
    uctAgendaPainter picture(painter, m_layout, m_runs);
    const double scrolled = verticalScrollBar()->value() - headerHeight();
    painter.translate(0, -scrolled);
    picture.paintDays(marks(), QRectF(viewport()->rect()).translated(0, scrolled));
    painter.resetTransform();
    picture.paintHeader(headerHeight());
    if (m_layout.items().empty() && m_layout.more().empty()) {
        painter.setPen(Palette::subtleText());
        painter.drawText(viewport()->rect(), Qt::AlignCenter | Qt::TextWordWrap, m_emptyText);
    }
}

QSizeF uctAgenda::wholeSize() const {
    return m_layout.size() + QSizeF(0, headerHeight());
}

void uctAgenda::paintWhole(QPainter& painter) const {
    painter.setFont(font());
    uctAgendaPainter picture(painter, m_layout, m_runs);
    picture.paintHeader(headerHeight());
    painter.translate(0, headerHeight());
    picture.paintDays({WallClock::now(), {}, {}}, QRectF(QPointF(), m_layout.size()));
}

void uctAgenda::resizeEvent(QResizeEvent* event) {
    QAbstractScrollArea::resizeEvent(event);
    const bool first = m_layout.sizes().width < 1 || !isVisible();
    lay();
    if (first) scrollToWork();
}

void uctAgenda::changeEvent(QEvent* event) {
    QAbstractScrollArea::changeEvent(event);
    if (event->type() == QEvent::FontChange) lay();
}

const AgendaLayout::Item* uctAgenda::itemAt(const QPoint& position) const {
    return position.y() < headerHeight() ? nullptr : m_layout.itemAt(content(position));
}

bool uctAgenda::viewportEvent(QEvent* event) {
    if (event->type() != QEvent::ToolTip) return QAbstractScrollArea::viewportEvent(event);
    const auto& help = static_cast<QHelpEvent&>(*event);
    const AgendaLayout::Item* item = itemAt(help.pos());
    const AgendaLayout::More* more = item ? nullptr : m_layout.moreAt(content(help.pos()));
    if (item)
        QToolTip::showText(help.globalPos(), m_runs[item->run].description(), viewport(),
                           item->place.toRect());
    else if (more)
        QToolTip::showText(help.globalPos(), "These runs stand in the list.", viewport());
    else
        QToolTip::hideText();
    return true;
}

void uctAgenda::mousePressEvent(QMouseEvent* event) {
    endMove();
    const QPoint position = event->position().toPoint();
    const AgendaLayout::Item* item = itemAt(position);
    if (!item) return;
    const AgendaRun& run = m_runs[item->run];
    if (event->button() == Qt::LeftButton && run.isMovable()) {
        const WallClock held = m_layout.timeAt(content(position), run.start).value_or(run.start);
        m_move = Move{.id = run.id(),
                      .from = run.start,
                      .pressed = position,
                      .grabbed = run.start.secsTo(held),
                      .fromBefore = item->fromBefore};
    }
    selectId(run.id(), false);
}

/// A release may have been lost: to a message, or while the program waited for the server.
void uctAgenda::mouseMoveEvent(QMouseEvent* event) {
    if (!m_move || m_move->byKeys) return;
    if (!(event->buttons() & Qt::LeftButton)) return endMove();
    Move& move = *m_move;
    move.held = event->position().toPoint();
    const int way = (move.held - move.pressed).manhattanLength();
    if (!move.begun && way < QApplication::startDragDistance()) return;
    move.begun = true;
    QToolTip::hideText();
    drag(move);
    m_scrolls.start();
}

void uctAgenda::drag(Move& move) {
    const bool beside = !viewport()->rect().contains(move.held) || move.held.y() < headerHeight();
    move.when = beside ? std::nullopt : m_layout.timeAt(content(move.held), move.from);
    if (move.when && m_view != AgendaView::Month) {
        const WallClock midnight(move.when->date(), QTime(0, 0));
        const WallClock start = move.when->addSecs(-move.grabbed);
        move.when = snapped(move.fromBefore ? start : std::max(start, midnight));
    }
    viewport()->setCursor(move.when ? Qt::ClosedHandCursor : Qt::ForbiddenCursor);
    viewport()->update();
}

/// Where the run is held at the upper or lower edge, or beyond it.
void uctAgenda::scrollWhileDragging() {
    if (!m_move) return;
    const int y = m_move->held.y();
    const int edge = fontMetrics().height();
    const bool above = y < headerHeight() + edge;
    if (!above && y <= viewport()->height() - edge) return;
    verticalScrollBar()->setValue(verticalScrollBar()->value() + (above ? -edge : edge) / 2);
    drag(*m_move);
}

void uctAgenda::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || !m_move || m_move->byKeys) return;
    m_move->held = event->position().toPoint();
    if (m_move->begun) drag(*m_move);
    finishMove();
}

void uctAgenda::finishMove() {
    const auto move = m_move;
    endMove();
    if (move && move->begun && move->when && *move->when != move->from)
        emit moveRequested(move->id, *move->when);
}

void uctAgenda::endMove() {
    m_move.reset();
    m_scrolls.stop();
    viewport()->unsetCursor();
    viewport()->update();
}

void uctAgenda::mouseDoubleClickEvent(QMouseEvent* event) {
    endMove();
    if (event->button() != Qt::LeftButton) return;
    const QPoint position = event->position().toPoint();
    if (const AgendaLayout::Item* item = itemAt(position)) {
        emit runActivated(m_runs[item->run].id());
    } else if (const AgendaLayout::Day* day = m_layout.dayAt(content(position));
               day && m_view != AgendaView::Day && position.y() >= headerHeight()) {
        turnTo(AgendaView::Day, day->date);
    }
}

void uctAgenda::focusOutEvent(QFocusEvent* event) {
    QAbstractScrollArea::focusOutEvent(event);
    endMove();
}

/// Enter belongs to the run that is being moved before it opens one.
bool uctAgenda::event(QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) event->accept();
    }
    return QAbstractScrollArea::event(event);
}

void uctAgenda::keyPressEvent(QKeyEvent* event) {
    const int key = event->key();
    const bool enter = key == Qt::Key_Return || key == Qt::Key_Enter;
    if (event->modifiers() & Qt::ControlModifier && moveByKey(key)) return;
    if (m_move) {
        if (enter) finishMove();
        if (key == Qt::Key_Escape) endMove();
        return;
    }
    if (enter && m_selected)
        emit runActivated(*m_selected);
    else if (key == Qt::Key_Left || key == Qt::Key_Up)
        selectNeighbour(-1);
    else if (key == Qt::Key_Right || key == Qt::Key_Down)
        selectNeighbour(1);
    else if (!turnByKey(key))
        QAbstractScrollArea::keyPressEvent(event);
}

bool uctAgenda::turnByKey(int key) {
    if (key == Qt::Key_PageUp || key == Qt::Key_PageDown)
        turnTo(m_view, turned(m_view, m_day, key == Qt::Key_PageUp ? -1 : 1));
    else if (key == Qt::Key_Home)
        turnTo(m_view, QDate::currentDate());
    else
        return false;
    return true;
}

/// Without a selection to the first run of the days shown.
void uctAgenda::selectNeighbour(int step) {
    if (m_runs.empty()) return;
    const auto last = qint64(m_runs.size()) - 1;
    const std::optional<std::size_t> selected = m_selected ? placeOf(*m_selected) : std::nullopt;
    const auto first = std::ranges::lower_bound(m_runs, days().first, {},
                                                [](const AgendaRun& run) { return run.start.date(); });
    const qint64 wanted = selected ? qint64(*selected) + step : first - m_runs.begin();
    selectId(m_runs[std::size_t(std::clamp<qint64>(wanted, 0, last))].id(), true);
}

/// Up and down by a quarter of an hour, or by a week in month view; left and right by a day.
bool uctAgenda::moveByKey(int key) {
    const bool sideways = key == Qt::Key_Left || key == Qt::Key_Right;
    if (!sideways && key != Qt::Key_Up && key != Qt::Key_Down) return false;
    const AgendaRun* run = m_selected ? runOf(*m_selected) : nullptr;
    if (!run || !run->isMovable()) return true;
    if (m_move && !m_move->byKeys) return true; // the mouse has it
    if (!m_move) m_move = Move{.id = run->id(), .from = run->start, .byKeys = true, .begun = true};
    const WallClock when = m_move->when.value_or(run->start);
    const int direction = key == Qt::Key_Left || key == Qt::Key_Up ? -1 : 1;
    const WallClock next = sideways                      ? when.addDays(direction)
                           : m_view == AgendaView::Month ? when.addDays(direction * 7)
                                                         : snapped(when.addSecs(direction * quarter));
    m_move->when = next;
    if (!days().contains(next.date())) turnTo(m_view, next.date());
    showPlace(m_layout.placeAt(next, 0));
    viewport()->update();
    return true;
}
