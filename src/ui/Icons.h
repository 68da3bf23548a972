#pragma once

#include <QIcon>

/// The icon of a freedesktop name from those that the program carries (ICONS in src/CMakeLists.txt); a plain
/// mark of its initial and a warning for another one, so that no button is ever blank.
QIcon icon(const QString& name);
/// The same for rows of lists: in the colour of the text where the row is selected.
QIcon rowIcon(const QString& name);
