#pragma once

#include "templates/NumberTable.h"

struct Session;

/// The list of numbers that the user edits for a parameter, in a working table of his own in the
/// project's database. It has a connection of its own.
class NumberList : public NumberTable {
public:
    /// For the session's current project and user; the session must outlive the object.
    explicit NumberList(Session& session);

    /// Makes the working table anew, empty.
    void CreateTblCallsTo();
    /// Fills the table from numbers separated by ",", blanks around them left away.
    LeftOut SetupNumbers(const QString& list, const Progress& progress);
    /// The numbers joined by ", ".
    QString joined() { return numbers().join(", "); }

protected:
    Connection& connection() override { return m_connection; }
    Sql selectNumbers() const override;
    Sql deleteAll() const override;
    Sql deleteThese(const Sql& condition) const override;
    Sql insertInto() const override;
    Sql values(const QString& number) const override;

private:
    Session& m_session;
    Name m_project;
    QString m_table;
    Connection m_connection;
};
