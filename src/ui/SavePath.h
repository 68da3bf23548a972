#pragma once

#include <QString>

class Messages;
class QWidget;

/// Asks for a file to write, in the home folder under a name with an ending at first; an ending that was left
/// out is added. Empty when the user gives up, or does not want to replace a file that exists.
QString askSavePath(Messages& messages, QWidget* parent, const QString& name, const QString& ending,
                    const QString& filter);
