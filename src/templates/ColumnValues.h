#pragma once

#include "db/ColumnText.h"
#include "db/Sql.h"

/// The columns of one row to be written, in order. Building it refuses what a column cannot hold, so
/// that a row is known to fit before the first statement is sent.
class ColumnValues {
public:
    /// `owner` says in refusals whose fields these are: " of the report '…'", or nothing.
    explicit ColumnValues(QString owner = {}) : m_owner(std::move(owner)) {}

    template <class T>
    void add(const QString& column, const T& value) {
        m_names << Sql::value(Name(column));
        m_values << Sql::value(value);
    }
    /// Refuses a text that its column cannot hold, see requireFits().
    void requireText(const QString& label, const QString& text, int maxLength, CodePage codePage) const {
        requireFits(label + m_owner, text, maxLength, codePage);
    }
    void addText(const QString& column, const QString& label, const QString& text, int maxLength,
                 CodePage codePage) {
        requireText(label, text, maxLength, codePage);
        add(column, text);
    }

    /// "[A], [B]"
    Sql names() const { return Sql::join(m_names, sql(", ")); }
    /// "1, N'x'"
    Sql values() const { return Sql::join(m_values, sql(", ")); }
    /// "[A] = 1, [B] = N'x'"
    Sql assignments() const {
        QList<Sql> assignments;
        for (qsizetype i = 0; i < m_names.size(); ++i) assignments << sql("{} = {}", m_names[i], m_values[i]);
        return Sql::join(assignments, sql(", "));
    }

private:
    QString m_owner;
    QList<Sql> m_names;
    QList<Sql> m_values;
};
