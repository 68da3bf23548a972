#pragma once

#include "schedules/ScheduleRow.h"
#include "schedules/SeriesRule.h"
#include "ui/ScreenDialog.h"

#include <QCheckBox>
#include <QTimer>
#include <array>
#include <memory>

class QAction;
namespace Ui {
class frmSeries;
}

/// Makes a series of schedules from one that is not stored yet: chooses the days, shows every run with what
/// is to be known of it, and stores all of them or none.
class frmSeries : public ScreenDialog {
    Q_OBJECT

public:
    explicit frmSeries(ScreenContext& context, QWidget* parent = nullptr);
    ~frmSeries() override;

    /// What is repeated, with its title as users see it; 0 on success.
    int Setup(const ScheduleRow& schedule, const WallClock& first);
    /// How many were stored; 0 when the user left without it.
    int savedCount() const { return m_savedCount; }
    /// The title of the first of them.
    QString firstTitle() const;

    void reject() override { QDialog::reject(); }

private slots:
    void cmdSave_Click();

private:
    struct Run {
        WallClock when;
        QString title;
        QString note;
    };

    void buildControls();
    SeriesRule rule() const;
    void showUnit();
    void showRuns();
    void findUsedTitles();
    void makeRuns();
    QList<ScheduleRow> rowsToStore() const;
    bool isUsed(const QString& title) const;
    QString problem() const;

    std::unique_ptr<Ui::frmSeries> m_ui;
    std::array<QCheckBox*, 7> m_weekdays{};
    QAction* m_cmdSave;
    QTimer m_asksForTitles; ///< the server is asked once the user has stopped choosing
    ScheduleRow m_schedule;
    WallClock m_first;
    std::vector<Run> m_runs;
    QStringList m_usedTitles; ///< as keys
    int m_leftOut = 0;        ///< runs on days that have passed
    int m_savedCount = 0;
};
