#pragma once

#include <QJsonDocument>
#include <QStringList>

/// A text that a terminal shows and does not obey: control characters, line ends and marks that turn the
/// direction of writing are written as "\n", "\t" and "\u001b".
QString escaped(const QString& text);
/// Cells of a terminal that a text takes: wide letters take two, marks over letters none.
int cellsOf(const QString& text);
/// JSON with the same characters escaped, which it allows in texts.
QString jsonText(const QByteArray& json);
QString jsonText(const QJsonDocument& document);

/// Rows of escaped texts in columns as wide as their widest cell; a line each.
QString tableText(const QStringList& captions, const QList<QStringList>& rows);
