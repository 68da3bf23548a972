#pragma once

#include "schedules/BulkChange.h"
#include "ui/ScreenDialog.h"

#include <memory>

class QAction;
class QCheckBox;
namespace Ui {
class frmChangeSchedules;
}

/// Changes several schedules alike: their time, project, template, state or owner.
class frmChangeSchedules : public ScreenDialog {
    Q_OBJECT

public:
    explicit frmChangeSchedules(ScreenContext& context, QWidget* parent = nullptr);
    ~frmChangeSchedules() override;

    /// Reads the schedules, and what they can become; 0 on success.
    int Setup(const QList<int>& ids);
    /// What came of it, for the status line; empty when the user left without a change.
    const QString& savedText() const { return m_savedText; }

    void reject() override { QDialog::reject(); }

private slots:
    void cmdSave_Click();
    void cmdOpen_Click();

private:
    void fillTemplates();
    void fillOwners();
    void updateControls();
    BulkChange change() const;
    bool prepareProject();

    std::unique_ptr<Ui::frmChangeSchedules> m_ui;
    QAction* m_cmdSave;
    QMap<int, ScheduleRow> m_schedules; ///< as they were read
    QString m_account;                  ///< whose templates are offered; empty while they are of several
    QString m_savedText;
};

/// How many schedules run at once when they are enabled so.
int overdueCount(const QMap<int, ScheduleRow>& schedules, const BulkChange& change);
/// The one question before several schedules are changed.
bool mayChange(ScreenContext& context, QWidget* parent, const QMap<int, ScheduleRow>& schedules,
               const BulkChange& change);
/// Changes schedules and tells which were left alone. For the status line, what was done. Throws DbError,
/// Refusal.
QString changeAndTell(ScreenContext& context, QWidget* parent, const QMap<int, ScheduleRow>& schedules,
                      const BulkChange& change);
