#pragma once

#include "projects/frmSQLServerDatabases.h"
#include "support/Caller.h"
#include "support/Controls.h"
#include "support/Modal.h"
#include "support/TestProgram.h"
#include "templates/frmReport.h"
#include "templates/frmSelectReports.h"
#include "ui/uctListView.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QTest>

/// In the report editor: picks the type and, in the chooser, the report.
inline void chooseReport(const frmReport& editor, int type, const QString& words) {
    auto& types = child<QComboBox>(editor, "cmbType");
    types.setCurrentIndex(types.findData(type));
    inNextModal<frmSelectReports>([words](frmSelectReports& chooser) {
        auto& filter = child<QLineEdit>(chooser, "txtFilter");
        QTest::keyClicks(&filter, words);
        QTest::keyClick(&filter, Qt::Key_Return);
    });
    press(editor, "cmdReports");
}

/// In the project chooser that a button is about to open: picks a project, or none.
inline void chooseProject(const QString& name) {
    inNextModal<frmSQLServerDatabases>([name](frmSQLServerDatabases& chooser) {
        child<QCheckBox>(chooser, "chkAccount").setChecked(false); // other accounts' projects as well
        child<QLineEdit>(chooser, "txtSearch").setText(name);
        press(chooser, name.isEmpty() ? "cmdCancel" : "cmdOpen");
    });
}

/// The program with templates, and the demo's project Brightwater opened.
struct TemplateProgram : TestProgram {
    Caller caller;

    explicit TemplateProgram(const QString& user = Session::serverLoginName,
                             const QString& project = "Brightwater");
    Connection& db() { return other(); }
    QStringList shown() { return messages.takeShown(); }
    int idOf(const QString& title);
    int scalar(const Sql& statement) { return db().scalar(statement).toInt(); }
    /// Adds an empty template and returns its ID.
    int addTemplate(const QString& title, const QString& account = "BW10023", int billType = 1);
    void addReport(int templateId, int type, int subType, bool excel = true);
    void addSchedule(int templateId, int status, const QString& ranDate, const QString& user = "QuorraAdmin");
    /// "type/identifier/outputs/accounts" of each report of a template, in stored order.
    QStringList reports(int templateId);
    /// Everything that is stored about templates.
    QStringList everything();
};
