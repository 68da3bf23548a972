#pragma once

#include "projects/modProjects.h"
#include "support/Caller.h"
#include "support/Controls.h"
#include "support/TestProgram.h"

/// A user at work in a project of the demo server.
struct Office {
    TestProgram program;
    Caller caller;

    explicit Office(const QString& user = Session::serverLoginName, const QString& project = "Brightwater") {
        program.logIn(user);
        if (!project.isEmpty()) openProject(program.session, project);
    }
    Connection& db() { return program.other(); }
    QStringList shown() { return program.messages.takeShown(); }
};
