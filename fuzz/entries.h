#pragma once

#include <QByteArray>

/// The readers of what others wrote, each behind one function that takes any bytes. A refusal is an answer
/// like any other; std::logic_error tells that something went wrong behind an answer.
namespace fuzz {

/// A script, with lines "GO" between its batches, on an embedded server of its own. What runs longer than a
/// moment is cancelled, which has to end it; afterwards the session and the file have to be as good as
/// before.
void sql(const QByteArray& script);
/// A file of telephone numbers: those that a list takes read back as they were when they are written.
void numbers(const QByteArray& file);
/// A file of e-mail addresses under every layout: the entries that an export takes read back likewise.
void addresses(const QByteArray& file);
/// A file of templates: those that it holds read back the same when they are written.
void templates(const QByteArray& file);
/// A security file: a password that comes out of it goes into another.
void security(const QByteArray& file);

} // namespace fuzz
