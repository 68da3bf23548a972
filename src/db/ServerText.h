#pragma once

#include <QString>

/// What texts are compared by on the server, whose collation disregards letter case and blanks at the end.
inline QString serverKey(const QString& text) {
    qsizetype length = text.size();
    while (length > 0 && text[length - 1] == ' ') --length;
    return text.left(length).toCaseFolded();
}

/// Whether two texts are the same for the server.
inline bool sameOnServer(const QString& left, const QString& right) {
    return serverKey(left) == serverKey(right);
}
