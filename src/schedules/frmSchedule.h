#pragma once

#include "schedules/clsSchedule.h"
#include "ui/ScreenDialog.h"

#include <functional>
#include <memory>
#include <optional>

class QAction;
namespace Ui {
class frmSchedule;
}

/// Makes a new schedule or edits one that waits for its run: its title, the project, the template and
/// the time. The project that is chosen becomes the session's current one.
class frmSchedule : public ScreenDialog {
    Q_OBJECT

public:
    explicit frmSchedule(ScreenContext& context, QWidget* parent = nullptr);
    ~frmSchedule() override;

    /// What the number given to Setup names.
    enum Purpose {
        EditSchedule,   ///< a schedule to be edited, or clsSchedule::notStored for a new one
        CopyOfSchedule, ///< one that a new one is to run like, from now on, under a free title
        ForTemplate,    ///< a template for which a new one is made, for the current project if that fits
    };
    /// 0 when the schedule could be loaded; a project
    /// that cannot be used any more is told and left to be chosen anew.
    int Setup(int id, Purpose purpose = EditSchedule);
    /// Saves what the screen was set up with. False when it was refused, which was told: then the screen is
    /// there to be shown.
    bool saveAtOnce();
    /// The schedule that was saved, and closed the screen by it; the first of a series.
    std::optional<int> savedId() const { return m_savedId; }
    /// "The schedule 'March' was saved.", or how many of a series were.
    QString savedText() const;

public slots:
    /// For the template screens that close.
    void CalledBack();

protected:
    bool mayClose() override;

private slots:
    void cmdOpen_Click();
    void cmbTemplate_Click();
    void cmdSave_Click();
    void cmdSaveAs_Click();
    void cmdRepeat_Click();
    void cmdDelete_Click();
    void cmdEditTemplate_Click();
    void cmdAddTemplate_Click();
    void cmdReports_Click();
    void cmdCCSub_Click();
    void txtTitle_Change();
    void dtRunOn_Change();

private:
    clsSchedule::LoadResult prepare(int id, Purpose purpose);
    void takeNewTemplate(int templateId);
    void buildFooter();
    void connectControls();
    void RefreshForm();
    void showTitleLength();
    void showRunDate();
    void showProject();
    void fillTemplates();
    void selectTemplate();
    void editTemplate(const QString& failure);
    void takeTemplate(int id);

    void openStoredProject();
    void chooseFromHistory(const QString& database);
    void takeCurrentProject();
    bool isProjectChosen() const;
    bool makeProjectCurrent();

    bool checkTitle(const QString& title);
    bool checkProject();
    bool checkTemplate();
    bool checkRunDate();
    void save(const QString& newTitle);
    bool prepareProject(bool keepsProject);
    bool isTemplateThere();
    bool store(const QString& newTitle);
    bool refused(const QString& text, QWidget* field);
    void tellRunMeanwhile();

    std::unique_ptr<Ui::frmSchedule> m_ui;
    QAction* m_cmdSaveAs = nullptr;
    QAction* m_cmdRepeat = nullptr;
    QAction* m_cmdDelete = nullptr;
    clsSchedule m_schedule;
    QString m_projectProblem; ///< why the schedule's project cannot be used; empty while it can
    QString m_newTitle;       ///< as typed for the last save-as, which was refused
    bool m_ready = false;     ///< changes of the controls are the user's
    bool m_saving = false;
    std::optional<int> m_savedId;
    int m_savedSeries = 0; ///< how many schedules of a series were saved
};
