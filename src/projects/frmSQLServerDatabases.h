#pragma once

#include "ui/ScreenDialog.h"

#include <memory>

namespace Ui {
class frmSQLServerDatabases;
}

/// The project chooser: accepted when the user opened a project, whose name selectedProject() gives.
class frmSQLServerDatabases : public ScreenDialog {
    Q_OBJECT

public:
    explicit frmSQLServerDatabases(ScreenContext& context, QWidget* parent = nullptr);
    ~frmSQLServerDatabases() override;

    /// Fills the list; 0 on success. Says which projects were left out. Projects of other accounts than the
    /// wanted one, if any, are shown on request only.
    int Setup(const QString& wantedAccount = {});
    QString selectedProject() const;

protected:
    bool tellsWhenCancelled() const override { return false; }

private slots:
    void lblOpen_Click();
    void txtSearch_Change(const QString& text);

private:
    std::unique_ptr<Ui::frmSQLServerDatabases> m_ui;
    void fillList(const QString& wantedAccount);
    void tellLeftOut(const QStringList& leftOut);

    QStringList m_projects;
};

/// Lets the user choose a project, makes it the session's current one and checks it. False when he
/// chose none, or one that cannot be used (he has been told why; the former project stays current).
bool chooseProject(ScreenContext& context, QWidget* parent, const QString& wantedAccount = {});

/// Makes a project current with the checks that every way of choosing one makes; false when it cannot
/// be used (the user has been told why; the former project stays current).
bool useProject(ScreenContext& context, QWidget* parent, const QString& database);
