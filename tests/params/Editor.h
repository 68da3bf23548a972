#pragma once

#include "projects/modProjects.h"
#include "reports/clsReport.h"
#include "support/TestProgram.h"
#include "templates/frmSelectParameters.h"

#include <QLineEdit>
#include <QTest>
#include <QToolButton>

/// Counts how often it is called back.
class Caller : public QObject {
    Q_OBJECT

public slots:
    void CalledbackParam() { ++calls; }
    void CalledBack() { ++calls; }

public:
    int calls = 0;
};

/// A user at work in a project.
struct Office {
    TestProgram program;
    Caller caller;

    explicit Office(const QString& user = "QuorraAdmin", const QString& project = "Brightwater") {
        program.logIn(user);
        openProject(program.session, project);
    }
    Connection& db() { return program.other(); }
    QStringList shown() { return program.messages.takeShown(); }
};

template <class T = QWidget>
T& child(QWidget& screen, const char* name) {
    T* found = screen.findChild<T*>(QString::fromLatin1(name));
    if (!found) qFatal("the screen has no %s", name);
    return *found;
}

inline void press(QWidget& screen, const char* button) {
    child<QAbstractButton>(screen, button).click();
}

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
