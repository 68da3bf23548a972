#pragma once

#include "schedules/AgendaRun.h"
#include "schedules/ScheduleReader.h"
#include "ui/ScreenDialog.h"

#include <QTimer>
#include <memory>

class QAction;
class DbError;
class clsSchedule;
enum class AgendaView;
namespace Ui {
class frmAgenda;
}

/// What runs when: the runs of all schedules on a time axis, and those of the days shown as a list beside it.
/// It reads by itself, every 30 seconds as the main screen does.
class frmAgenda : public ScreenDialog {
    Q_OBJECT

public:
    explicit frmAgenda(ScreenContext& context, QWidget* parent = nullptr);
    ~frmAgenda() override;

    /// 0 when the schedules could be read. The watch must outlive the screen.
    int Setup(const RunWatch& watch);

signals:
    /// To be edited, reset or its log to be read: whoever opened this screen knows what becomes of a
    /// schedule.
    void openRequested(int scheduleId);

public slots:
    /// For the screens over this one that close.
    void CalledBack();

private slots:
    void cmdOpen_Click();
    void cmdMove_Click();
    void cmdSavePicture_Click();
    void cmdSaveCalendar_Click();

private:
    void buildFooter();
    void buildBar();
    void buildList();
    void connectAgenda();
    void updateActions();

    void refresh();
    void take(const ScheduleChanges& changes);
    void showProblemOf(const DbError& error);
    void showRuns();
    void showDays(AgendaView view, QDate day);
    void daysShown();
    void showNote();
    void fillList();
    void askToMove(int id, const WallClock& when);
    bool mayMove(int id, const WallClock& when);
    void write(const QString& path, const QByteArray& content);

    std::unique_ptr<Ui::frmAgenda> m_ui;
    ScheduleReader m_reader;
    std::optional<AgendaView> m_savedView;
    QTimer m_tmrAgenda;
    const RunWatch* m_watch = nullptr;
    QHash<int, ScheduleListRow> m_schedules;
    int m_undated = 0;
    Moment m_read; ///< when the schedules were read last
    QAction* m_cmdOpen = nullptr;
    QAction* m_cmdMove = nullptr;
};
