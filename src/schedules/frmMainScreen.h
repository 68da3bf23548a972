#pragma once

#include "schedules/ScheduleReader.h"
#include "schedules/uctShownSchedules.h"
#include "ui/ScreenContext.h"
#include "ui/SlotGuard.h"

#include <QMainWindow>
#include <QTimer>
#include <functional>
#include <memory>

class DesktopNotices;
class QLabel;
class frmManageTemplates;
class frmSchedule;
class uctBulkActions;
class uctFilterBox;
class uctListView;
class DbError;
namespace Ui {
class frmMainScreen;
}

/// The hub of the program: the pending and the completed schedules, kept current by a timer, and the
/// ways into every other screen.
class frmMainScreen : public QMainWindow {
    Q_OBJECT

public:
    /// Upgrades the scheduler database and reads the global options; throws DbError when it cannot.
    explicit frmMainScreen(ScreenContext& context, QWidget* parent = nullptr);
    ~frmMainScreen() override;

    /// Window state, place and size as this desktop user left them.
    void restorePlacement();
    /// Reads the schedules anew and waits for it; the timer reads in the background. While the server cannot
    /// be reached the lists stay as they are and the status line says so.
    void FillScheduleList();
    /// Brings the due texts of the pending schedules up to date; unless forced, once a minute at most.
    void PopulateScreen(bool force);
    /// Shows a line for a while.
    void tell(const QString& text);

signals:
    /// The options stand on a higher floor: whoever opened this screen opens them.
    void optionsRequested();

public slots:
    /// For child screens that close.
    void CalledBack();

protected:
    void closeEvent(QCloseEvent* event) override;

private slots:
    void cmdAdd_Click();
    void cmdEdit_Click();
    void cmdDelete_Click();
    void cmdRunNow_Click();
    void cmdRunAgain_Click();
    void cmdManageTemplates_Click();
    void cmdAgenda_Click();
    void cmdVersion_Click();
    void cmdHelp_Click();
    void tmrScheduler_Timer();

private:
    void buildFooter();
    uctBulkActions* bulkActions(uctListView& list);
    void buildLists();
    void buildStatusBar();
    void updateActions();
    uctListView& activeList() const;
    void markAsSeen(int id);
    void tellNews(int id);
    void showCounts();
    void runAgain(const std::function<void(frmSchedule& editor)>& save);
    void showSaved(const std::unique_ptr<frmSchedule>& editor);
    void scheduleTemplate(frmManageTemplates& caller, int templateId);
    uctFilterBox* filterBox(const QString& name, uctListView& list);
    void connectList(uctListView& list, bool finished);
    void tellProblem(const DbError& error);
    void showChanges(const ScheduleChanges& changes);
    void selectRow(bool finished);
    void editSchedule(int id, QWidget& caller);
    QString processedSince(int id) const;
    void resetSchedule(int id, QWidget& caller);
    void run(const std::function<void()>& body, const SlotName& slot = std::source_location::current());

    ScreenContext& m_context;
    std::unique_ptr<Ui::frmMainScreen> m_ui;
    QTimer m_tmrScheduler;
    ScheduleReader m_reader;
    ShownSchedules m_shown;
    WallClock m_problemSince;                  ///< while the status line tells one
    std::unique_ptr<DesktopNotices> m_notices; ///< once there was one to tell
    uctBulkActions* m_ofPending = nullptr;
    uctBulkActions* m_ofFinished = nullptr;
    QAction* m_cmdEdit = nullptr;
    QAction* m_showLog = nullptr;
    QAction* m_cmdRunNow = nullptr;
    QAction* m_cmdRunAgain = nullptr;
    QLabel* m_lblCounts = nullptr;
    QLabel* m_lblRefreshed = nullptr;
    bool m_finishedListActive = false;
    WallClock m_lastDueUpdate;
};
