// The cursors of Executor. A cursor reads its rows whole when it is opened.
#include "embedded/Collation.h"
#include "embedded/Conversion.h"
#include "embedded/Errors.h"
#include "embedded/Executor.h"

namespace embedded {

void Executor::run(const CursorStatement& statement) {
    using Action = CursorStatement::Action;
    const Action action = statement.action;
    if (action == Action::Declare) return declareCursor(statement);
    const QString key = cursorKey(statement.cursor);
    const auto found = m_session.cursors.find(key);
    if (found == m_session.cursors.end())
        throw serverError(16916, "A cursor with the name '%1' does not exist.", key);
    Cursor& cursor = found->second;
    if (action == Action::Open && cursor.open) throw DbError(16905, "The cursor is already open.");
    if ((action == Action::Fetch || action == Action::Close) && !cursor.open)
        throw DbError(16917, "Cursor is not open.");
    if (action == Action::Open)
        open(cursor);
    else if (action == Action::Fetch)
        fetch(cursor, statement.into);
    else if (action == Action::Close)
        cursor.open = false;
    else
        m_session.cursors.erase(found);
}

void Executor::declareCursor(const CursorStatement& statement) {
    QString key = collation::fold(statement.cursor);
    if (statement.cursor.startsWith(u'@')) {
        Variable& variable = m_session.variable(statement.cursor);
        if (variable.cursor.isNull()) throw serverError(16957, "%1 is no cursor.", statement.cursor);
        key = variable.cursor = statement.cursor + '#' + QString::number(++m_session.nextStorage);
    }
    if (m_session.cursors.count(key))
        throw serverError(16915, "A cursor with the name '%1' already exists.", key);
    Cursor& cursor = m_session.cursors[key];
    cursor.query = statement.query;
    cursor.captured = m_session.frames.back().variables;
    m_session.frames.back().cursors.append(key);
}

QString Executor::cursorKey(const QString& name) const {
    if (!name.startsWith(u'@')) return collation::fold(name);
    const QString cursor = m_session.variable(name).cursor;
    if (cursor.isEmpty()) throw serverError(16950, "The variable '%1' does not have a cursor.", name);
    return cursor;
}

/// The query sees its variables as they were when the cursor was declared.
void Executor::open(Cursor& cursor) {
    std::swap(cursor.captured, m_session.frames.back().variables);
    const auto restore = qScopeGuard([&] { std::swap(cursor.captured, m_session.frames.back().variables); });
    const Translation translation = translator().select(*cursor.query);
    SqliteStatement rows = prepared(translation);
    cursor.types = translation.types;
    cursor.rows.clear();
    while (rows.step()) {
        cursor.rows.emplace_back();
        for (int i = 0; i < cursor.types.size(); ++i) cursor.rows.back().push_back(rows.value(i));
    }
    cursor.next = 0;
    cursor.open = true;
}

void Executor::fetch(Cursor& cursor, const QStringList& into) {
    if (into.size() != cursor.types.size()) throw DbError(16924, "FETCH needs a variable for each column.");
    const bool onRow = cursor.next < cursor.rows.size();
    m_session.fetchStatus = onRow ? 0 : -1;
    const std::vector<Value> row = onRow ? cursor.rows[cursor.next++] : std::vector<Value>();
    for (std::size_t i = 0; i < row.size(); ++i) {
        Variable& variable = m_session.variable(into[qsizetype(i)]);
        variable.value = Conversion{cursor.types[qsizetype(i)], variable.type}(row[i]);
    }
}

} // namespace embedded
