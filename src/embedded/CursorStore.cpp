#include "embedded/CursorStore.h"

#include "embedded/Errors.h"

namespace embedded {

void CursorStore::declare(const QString& key, const QueryPtr& query) {
    if (m_session.cursors.count(key))
        throw DbError(16915, QString("A cursor with the name '%1' already exists.").arg(key));
    Cursor cursor;
    cursor.query = query;
    cursor.captured = m_session.frames.back().variables;
    m_session.cursors[key] = cursor;
    m_session.frames.back().cursors.append(key);
}

Cursor& CursorStore::find(const QString& key) {
    const auto found = m_session.cursors.find(key);
    if (found == m_session.cursors.end())
        throw DbError(16916, QString("A cursor with the name '%1' does not exist.").arg(key));
    return found->second;
}

Cursor& CursorStore::toOpen(const QString& key) {
    Cursor& cursor = find(key);
    if (cursor.open) throw DbError(16905, "The cursor is already open.");
    return cursor;
}

Cursor& CursorStore::opened(const QString& key) {
    Cursor& cursor = find(key);
    if (!cursor.open) throw DbError(16917, "Cursor is not open.");
    return cursor;
}

void CursorStore::close(const QString& key) {
    Cursor& cursor = opened(key);
    cursor.open = false;
    cursor.rows.clear();
}

void CursorStore::deallocate(const QString& key) {
    find(key);
    m_session.cursors.erase(key);
}

const std::vector<Value>* CursorStore::next(Cursor& cursor) {
    const bool onRow = cursor.next < cursor.rows.size();
    m_session.fetchStatus = onRow ? 0 : -1;
    return onRow ? &cursor.rows[cursor.next++] : nullptr;
}

} // namespace embedded
