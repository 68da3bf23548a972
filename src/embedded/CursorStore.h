#pragma once

#include "embedded/Ast.h"
#include "embedded/Session.h"

namespace embedded {

/// The cursors of a session, by folded name. A cursor reads its rows whole when it is opened.
class CursorStore {
public:
    explicit CursorStore(Session& session) : m_session(session) {}

    /// Throws DbError 16915 when the name is taken.
    void declare(const QString& key, const QueryPtr& query);
    /// Throws DbError 16916 for a cursor that does not exist, 16905 for one already open.
    Cursor& toOpen(const QString& key);
    Cursor& opened(const QString& key); ///< 16917 when it is not open
    void close(const QString& key);
    void deallocate(const QString& key);
    /// The next row, or null behind the last one. Sets @@FETCH_STATUS.
    const std::vector<Value>* next(Cursor& cursor);

private:
    Cursor& find(const QString& key);
    Session& m_session;
};

} // namespace embedded
