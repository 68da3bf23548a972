#include "embedded/Collation.h"

namespace embedded::collation {

namespace {

bool sameLetter(QChar a, QChar b) {
    return a == b || a.toCaseFolded() == b.toCaseFolded();
}

/// Matches one character against the class that starts behind "[", and moves `at` behind its "]".
bool matchesClass(QChar c, QStringView pattern, qsizetype& at) {
    const bool negated = at < pattern.size() && pattern[at] == u'^';
    if (negated) ++at;
    bool found = false;
    for (bool first = true; at < pattern.size() && (first || pattern[at] != u']'); first = false) {
        const QChar low = pattern[at++];
        if (at + 1 < pattern.size() && pattern[at] == u'-' && pattern[at + 1] != u']') {
            const int own = weight(c);
            found |= weight(low) <= own && own <= weight(pattern[at + 1]);
            at += 2;
        } else {
            found |= sameLetter(c, low);
        }
    }
    ++at;
    return found != negated;
}

} // namespace

bool matchesLike(QStringView text, QStringView pattern, QChar escape) {
    qsizetype t = 0;
    qsizetype p = 0;
    qsizetype lastPercent = -1; // where to go on when a later part does not match
    qsizetype retryAt = 0;
    while (t < text.size() || p < pattern.size()) {
        if (p < pattern.size() && pattern[p] == u'%' && (escape.isNull() || pattern[p] != escape)) {
            lastPercent = ++p;
            retryAt = t;
            continue;
        }
        bool matches = false;
        qsizetype next = p + 1;
        if (p < pattern.size() && t < text.size()) {
            if (!escape.isNull() && pattern[p] == escape && next < pattern.size())
                matches = sameLetter(text[t], pattern[next++]);
            else if (pattern[p] == u'_')
                matches = true;
            else if (pattern[p] == u'[')
                matches = matchesClass(text[t], pattern, next);
            else
                matches = sameLetter(text[t], pattern[p]);
        } else if (p == pattern.size() && trimmed(text.mid(t)).isEmpty()) {
            return true; // blanks at the end of the text do not count
        }
        if (matches) {
            ++t;
            p = next;
        } else if (lastPercent >= 0 && retryAt < text.size()) {
            t = ++retryAt;
            p = lastPercent;
        } else {
            return false;
        }
    }
    return true;
}

} // namespace embedded::collation
