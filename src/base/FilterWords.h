#pragma once

#include <QStringList>
#include <algorithm>

/// Whether a row is shown by what was typed into a filter: every word occurs in one of its texts, which stand
/// in lines, without regard to case.
inline bool holdsWords(const QString& texts, const QStringList& words) {
    return std::ranges::all_of(
        words, [&](const QString& word) { return texts.contains(word, Qt::CaseInsensitive); });
}

inline QStringList filterWords(const QString& typed) {
    return typed.split(' ', Qt::SkipEmptyParts);
}
