#pragma once

#include <QStringList>

/// Files of telephone numbers, one on each line.
namespace numberFile {

/// The numbers of a text, without double quotes and blanks. Line ends, commas and tabs part them: a
/// number list is stored with commas between its numbers, so that none may hold one.
QStringList numbersIn(const QString& text);
/// The numbers of a file. Throws std::runtime_error, in words for the user, for a file that cannot be
/// read, is no text or is far too large.
QStringList read(const QString& path);
/// Writes the file whole or leaves the former one as it was; throws std::runtime_error.
void write(const QString& path, const QStringList& numbers);

} // namespace numberFile
