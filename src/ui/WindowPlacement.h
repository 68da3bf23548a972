#pragma once

class QWidget;

/// The place, size and state that this desktop user left the program's first window in; maximized when it is
/// new to him. A place on a monitor that is gone is moved to one that is there.
void restoreWindowPlacement(QWidget& window);
void saveWindowPlacement(const QWidget& window);
