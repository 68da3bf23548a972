#pragma once

#include <QIcon>

/// The icon of a freedesktop name from the installed theme, with a plain mark of its initial where
/// the theme lacks it, so that no button is ever blank.
QIcon icon(const QString& name);
