#pragma once

#include <QDate>
#include <QList>
#include <QString>

/// One invented customer and the project database that holds its bills.
struct DemoProject {
    enum Trait {
        Ordinary = 0,
        Wispera = 1,  ///< holds Wispera events
        Appended = 2, ///< holds bills of import kind "O"
        Older = 4,    ///< lacks the later columns and some current accounts
        WithoutCentres = 8,
        Archive = 16,
        Inaccessible = 32, ///< the Scheduler's login may not open it
    };

    QString database;
    QString account;
    QString customer;
    int billType;
    QString numberPrefix; ///< of the customer's telephone numbers
    int traits = Ordinary;

    bool is(Trait trait) const { return (traits & trait) != 0; }
    /// The Scheduler lists it.
    bool isListed() const { return !is(WithoutCentres) && !is(Archive) && !is(Inaccessible); }
};

/// One bill of a project.
struct DemoBill {
    int id;
    QDate start;
    QDate end;
};

namespace demoProjects {

/// All of them; the first four have the bill types 1 to 4.
const QList<DemoProject>& all();
/// The bills that every project has: one of spring 2008, the others of the months before `today`.
QList<DemoBill> bills(const QDate& today);

} // namespace demoProjects
