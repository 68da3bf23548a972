#pragma once

#include "schedules/ScheduleLog.h"
#include "schedules/clsSchedule.h"
#include "ui/ScreenDialog.h"

#include <memory>

namespace Ui {
class frmScheduleView;
}

/// A schedule that has been run, and the log that the run left: which reports failed, and why.
class frmScheduleView : public ScreenDialog {
    Q_OBJECT

public:
    explicit frmScheduleView(ScreenContext& context, QWidget* parent = nullptr);
    ~frmScheduleView() override;

    /// Reads the schedule and its log into the screen; 0 on success.
    int Setup(int scheduleId);

private slots:
    void cmdSaveAs_Click();
    void cmdDelete_Click();
    void cmdSaveLog_Click();
    void lstLog_Click();
    void fillLog();

private:
    void buildFooter();
    void buildList();
    void fillLabels();
    void selectFirstError();
    const LogEntry* entryOf(int logId) const;
    bool saveCopy(const QString& title);
    void warnOfImmediateRun();

    std::unique_ptr<Ui::frmScheduleView> m_ui;
    int m_scheduleId = clsSchedule::notStored;
    QString m_newTitle; ///< typed for a copy, offered again when it was refused
    clsSchedule m_schedule;
    std::vector<LogEntry> m_log;
};
