#pragma once

#include <QDate>
#include <QList>
#include <QStringList>

struct Session;

/// The analysis projects of the server that its login can open, archives apart.
struct ProjectList {
    QStringList names;   ///< in the server's order
    QStringList leftOut; ///< databases whose account has no cost-centre table
};

/// Lists the projects through the procedure spGetProjectList, which is made anew first; the number of
/// statements does not depend on the number of databases. Projects that are left out are written to
/// the error log. The default database is restored. Throws DbError.
ProjectList loadProjectList(Session& session);

/// Whether the list may hold a database, by its name and the login's rights.
bool isOfferedAsProject(Session& session, const QString& database);

/// What tells projects apart; empty, 0 and invalid where a project does not say.
struct ProjectDetails {
    QString account;
    int billType = 0;
    QDate firstBill;
    QDate lastBill;
};

/// Beside the names, in two round trips.
QList<ProjectDetails> readProjectDetails(Session& session, const QStringList& names);
