#pragma once

#include "parameters/frmSelectParameters.h"
#include "reports/clsReport.h"
#include "support/Office.h"

#include <QLineEdit>
#include <QTest>

inline void type(QWidget& screen, const char* box, const QString& text) {
    auto& edit = child<QLineEdit>(screen, box);
    edit.setText(text);
    QTest::keyClick(&edit, Qt::Key_Return);
}

/// The parameter editor over one report.
struct Editor {
    Office& office;
    clsReport report;
    frmSelectParameters screen;

    Editor(Office& o, int reportType, int reportSubType)
        : office(o), report(o.program.session.project), screen(o.program.context) {
        report.setReportType(reportType);
        report.setReportSubType(reportSubType);
    }
    clsReportParameters& parameters() { return *report.Parameters(); }
    bool open(int templateId = -1) {
        screen.SetCallback(&office.caller, "CalledbackParam");
        if (screen.Setup(report, templateId) != 0) return false;
        screen.show();
        return true;
    }
    /// Presses Save; returns what was said.
    QStringList save() {
        press(screen, "cmdSave");
        return office.shown();
    }
    bool isOpen() const { return screen.isVisible(); }
};
