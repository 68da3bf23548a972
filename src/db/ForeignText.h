#pragma once

#include <QStringList>

/// The text of a file that other programs wrote: UTF-8 or UTF-16 as its mark says, UTF-8 where the bytes are
/// valid as such, else Windows-1252.
QString foreignText(const QByteArray& bytes);
/// The same in lines, which end as on Windows or Unix; none after the last line's end. Read the bytes as they
/// are: a device in text mode tears UTF-16 apart.
QStringList foreignLines(const QByteArray& bytes);
