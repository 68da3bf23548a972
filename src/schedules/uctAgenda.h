#pragma once

#include "schedules/AgendaLayout.h"

#include <QAbstractScrollArea>
#include <QTimer>
#include <functional>

class QPainter;
struct AgendaMarks;

/// The runs of schedules on a time axis, as a month, a week or a day. Arrow keys go from run to run in the
/// order of time, Enter or a double-click opens one. One that waits is dragged to another time, or moved
/// there by Ctrl and the arrow keys and then Enter; Esc undoes that. A move is only asked for: runs come by
/// setRuns.
class uctAgenda : public QAbstractScrollArea {
    Q_OBJECT

public:
    explicit uctAgenda(QWidget* parent = nullptr);

    /// In the order of their start. A run that is being moved and cannot be any more is let go.
    void setRuns(std::vector<AgendaRun> runs);
    const std::vector<AgendaRun>& runs() const { return m_runs; }
    const AgendaRun* runOf(int id) const;
    void setEmptyText(const QString& text) { m_emptyText = text; }

    void showDays(AgendaView view, QDate day);
    AgendaView view() const { return m_view; }
    QDate day() const { return m_day; }
    AgendaDays days() const { return shownDays(m_view, m_day); }
    const AgendaLayout& layOut() const { return m_layout; }

    std::optional<int> selectedId() const { return m_selected; }
    /// Turns to the run's day where `turn` says so; false when there is no such run.
    bool selectId(int id, bool turn);

    /// All hours of the shown days, with their names above.
    QSizeF wholeSize() const;
    void paintWhole(QPainter& painter) const;
    double headerHeight() const;

signals:
    void selectedIdChanged();
    void runActivated(int id);
    void daysChanged(); ///< the user turned to others, here
    void moveRequested(int id, const WallClock& when);
    void moveLost(const QString& title); ///< the run that was being moved cannot be any more

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    /// A run that is being moved, or held and may be.
    struct Move {
        int id = 0;
        WallClock from{};
        QPoint pressed{};
        QPoint held{};           ///< where the mouse was last
        qint64 grabbed = 0;      ///< seconds of the run before the point where it was pressed
        bool fromBefore = false; ///< it is held on a day on which it does not begin
        bool byKeys = false;
        bool begun = false;
        std::optional<WallClock> when{}; ///< nothing while it is held beside the days
    };

    void lay();
    void scrollToWork();
    void showPlace(const std::optional<QRectF>& place);
    std::optional<std::size_t> placeOf(int id) const;
    const AgendaLayout::Item* itemAt(const QPoint& position) const;
    QPointF content(const QPoint& position) const;
    AgendaMarks marks() const;
    void turnTo(AgendaView view, QDate day);
    void selectNeighbour(int step);
    bool moveByKey(int key);
    bool turnByKey(int key);
    void drag(Move& move);
    void scrollWhileDragging();
    void endMove();
    void finishMove();
    void tellSelected();
    void dropSelection(const std::function<bool()>& isOutOfSight);

    std::vector<AgendaRun> m_runs;
    AgendaView m_view = AgendaView::Week;
    QDate m_day;
    AgendaLayout m_layout;
    std::optional<int> m_selected;
    std::optional<Move> m_move;
    QTimer m_scrolls;
    QString m_emptyText;
};
