#pragma once

#include <QIcon>

/// The icon of a freedesktop name from the installed theme, with a plain mark of its initial where
/// the theme lacks it, so that no button is ever blank.
QIcon icon(const QString& name);
/// The same for rows of lists: in the colour of the text where the row is selected.
QIcon rowIcon(const QString& name);
