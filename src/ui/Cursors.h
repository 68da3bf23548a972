#pragma once

#include <QCursor>
#include <QGuiApplication>

/// A pointer shape for one scope, given back however the scope is left.
class CursorScope {
public:
    explicit CursorScope(Qt::CursorShape shape) { QGuiApplication::setOverrideCursor(shape); }
    CursorScope(const CursorScope&) = delete;
    CursorScope& operator=(const CursorScope&) = delete;
    ~CursorScope() { QGuiApplication::restoreOverrideCursor(); }
};

/// The hourglass over long work.
struct WaitCursor : CursorScope {
    WaitCursor() : CursorScope(Qt::WaitCursor) {}
};

/// The arrow over a question in the middle of long work.
struct NormalCursor : CursorScope {
    NormalCursor() : CursorScope(Qt::ArrowCursor) {}
};
