#pragma once

#include <QString>

class Messages;
class QWidget;

/// Asks for a file to write. Its ending is one of the filter's: what was typed counts, then what was chosen,
/// and the ending of the suggestion gives way to both. Empty when the user gives up; whether an existing file
/// may be replaced is the caller's to ask.
QString pickSavePath(Messages& messages, QWidget* parent, const QString& suggested, const QString& filter);

/// The same, in the home folder under a name with an ending at first. Empty also when the user does not want
/// to replace a file that exists.
QString askSavePath(Messages& messages, QWidget* parent, const QString& name, const QString& ending,
                    const QString& filter);
