#pragma once

#include "base/DeskMark.h"
#include "numbers/NumberTable.h"

struct Session;

/// The list of numbers that the user edits for a parameter, in a working table in the project's database that
/// no other desk uses, not even the same user's. It has a connection of its own.
class NumberList : public NumberTable {
public:
    /// For the session's current project and user; the session must outlive the object.
    explicit NumberList(Session& session);
    /// Drops the working table.
    ~NumberList() override;

    /// Makes the working table, empty, and drops those that programs have left on this computer.
    void CreateTblCallsTo();
    /// Fills the table from numbers separated by ",", blanks around them left away.
    LeftOut SetupNumbers(const QString& list, const Progress& progress);
    /// The numbers joined by ", ".
    QString joined() { return numbers().join(", "); }

protected:
    Connection& connection() override { return m_connection; }
    Sql selectNumbers() const override;
    Sql deleteAll() const override;
    Sql selectThese(const Sql& condition) const override;
    Sql deleteThese(const Sql& condition) const override;
    Sql insertInto() const override;
    Sql values(const QString& number) const override;

private:
    void dropTable(const QString& name);

    Session& m_session;
    Name m_project;
    DeskMark m_desk;
    QString m_table;
    Connection m_connection;
};
