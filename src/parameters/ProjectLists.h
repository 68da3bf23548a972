#pragma once

#include "base/CurrentProject.h"
#include "db/Connection.h"

#include <QStringList>
#include <array>

/// A line of the project as lists show it.
struct ProjectLine {
    QString number;
    QStringList extensions;
};

/// A kind of mobile calls.
struct CallClass {
    QString code;
    QString description;
};

/// The lists that a project offers for choosing parameters from. What a project lacks (a table, a
/// column, a central database) gives an empty list; any other failure throws DbError.
class ProjectLists {
public:
    using CostCentres = std::array<QString, 5>; ///< chosen at levels 1 to 5; empty where none is

    /// Both must outlive the object.
    ProjectLists(Connection& connection, const CurrentProject& project);

    /// The cost centres of a level 1 to 5 among the numbers that belong to the cost centres chosen at
    /// the levels above it. Numbers without one appear as noCostCentre, which may also be chosen.
    QStringList costCentres(int level, const CostCentres& chosen) const;
    /// The numbers that belong to all the cost centres chosen.
    QStringList serviceNumbers(const CostCentres& chosen) const;
    QStringList handsets() const;
    QStringList sourceBills() const;
    QStringList circuits() const;
    QStringList wisperaUsers() const;
    QList<CallClass> callClasses() const;
    /// Whether mobile calls without a class are there.
    bool hasUnclassedCalls() const;
    /// Ordered by their numbers.
    QList<ProjectLine> lines() const;

private:
    template <class MakeSql>
    RecordSet read(MakeSql statement) const;
    template <class MakeSql>
    QStringList readTexts(MakeSql statement) const;
    Name costCentreTable() const;

    Connection& m_connection;
    const CurrentProject& m_project;
};
