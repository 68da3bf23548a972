#pragma once

#include "numbers/NumberTable.h"

#include <QHash>

/// The numbers that a template's reports leave out. A template that was never saved has the key -1;
/// saving it hands the numbers over to its new key. Remembers what was changed through this object, so
/// that just that can be undone while others change the list as well.
class ExcludedNumbers : public NumberTable {
public:
    /// The connection must outlive the object.
    ExcludedNumbers(Connection& connection, int templateId);

    int count();
    /// How often the number is excluded, over all templates.
    int countEverywhere(const QString& number);

    void add(const QStringList& numbers) override;
    void clear() override;
    void removeAll(const QStringList& numbers) override;
    void replace(const QStringList& numbers, const Progress& progress) override;
    bool isChanged() const;
    /// The numbers added through this object that are there.
    QStringList added() const;
    /// Removes what was added and puts back what was removed: all of it or, after a failure, nothing.
    void undo();

protected:
    Connection& connection() override { return m_connection; }
    Sql selectNumbers() const override;
    Sql deleteAll() const override;
    Sql selectThese(const Sql& condition) const override;
    Sql deleteThese(const Sql& condition) const override;
    Sql insertInto() const override;
    Sql values(const QString& number) const override;

private:
    struct Entry {
        QString number;
        bool include = false;
        bool operator==(const Entry&) const = default;
    };
    using Entries = QHash<QString, QList<Entry>>; ///< by numberKey

    /// What was found under a number's key before its first change, and what the last one left there.
    struct Change {
        QList<Entry> before;
        QList<Entry> now;
    };

    Entries entries();
    void note(const Entries& before, const Entries& now);
    void insertEntries(const QList<Entry>& entries);

    Connection& m_connection;
    int m_templateId;
    QHash<QString, Change> m_changes; ///< by numberKey
};
