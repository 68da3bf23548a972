#include "embedded/Collation.h"

#include <array>

namespace embedded::collation {

namespace {

constexpr int LetterBase = 512;
constexpr int OtherBase = 1024;

/// Weights of ASCII: signs in their code's order, then digits, then letters without case.
constexpr std::array<quint16, 128> asciiWeights = [] {
    std::array<quint16, 128> weights{};
    for (int c = 0; c < 128; ++c) {
        int weight = c + 1;
        if (c >= '0' && c <= '9') weight = 256 + c;
        if (c >= 'a' && c <= 'z') weight = LetterBase + c - 'a';
        if (c >= 'A' && c <= 'Z') weight = LetterBase + c - 'A';
        weights[std::size_t(c)] = quint16(weight);
    }
    return weights;
}();

struct Weight {
    int letter; ///< of the bare character
    int accent;
};

Weight weightOf(QChar c) {
    if (c.unicode() < 128) return {asciiWeights[c.unicode()], 0};
    const QChar folded = c.toCaseFolded();
    const QString parts = folded.decomposition();
    if (folded.decompositionTag() == QChar::Canonical && parts.size() == 2 && parts[0].unicode() < 128)
        return {asciiWeights[parts[0].unicode()], parts[1].unicode()};
    return {OtherBase + folded.unicode(), 0};
}

int compareAnyText(QStringView a, QStringView b) {
    a = trimmed(a);
    b = trimmed(b);
    int accents = 0;
    for (qsizetype i = 0; i < std::min(a.size(), b.size()); ++i) {
        const Weight left = weightOf(a[i]);
        const Weight right = weightOf(b[i]);
        if (left.letter != right.letter) return left.letter - right.letter;
        if (accents == 0) accents = left.accent - right.accent;
    }
    if (a.size() != b.size()) return a.size() < b.size() ? -1 : 1;
    return accents;
}

qsizetype lengthWithoutTrailingBlanks(QByteArrayView text) {
    qsizetype length = text.size();
    while (length > 0 && text[length - 1] == ' ') --length;
    return length;
}

} // namespace

QStringView trimmed(QStringView text) {
    while (text.endsWith(u' ')) text.chop(1);
    return text;
}

int compare(QByteArrayView a, QByteArrayView b) {
    const qsizetype sizeA = lengthWithoutTrailingBlanks(a);
    const qsizetype sizeB = lengthWithoutTrailingBlanks(b);
    const qsizetype shared = std::min(sizeA, sizeB);
    // ASCII has no accents, so its first difference decides, whatever follows.
    for (qsizetype i = 0; i < shared; ++i) {
        const auto left = uchar(a[i]);
        const auto right = uchar(b[i]);
        if ((left | right) & 0x80)
            return compareAnyText(QString::fromUtf8(a.first(sizeA)), QString::fromUtf8(b.first(sizeB)));
        if (left == right) continue;
        if (const int difference = asciiWeights[left] - asciiWeights[right]) return difference;
    }
    if (sizeA == sizeB) return 0;
    return sizeA < sizeB ? -1 : 1;
}

int compare(const QString& a, const QString& b) {
    return compareAnyText(a, b);
}

QString fold(const QString& text) {
    QString folded = trimmed(text).toString();
    for (QChar& c : folded) c = c.toCaseFolded();
    return folded;
}

qsizetype indexOf(const QString& text, const QString& part, qsizetype from) {
    return text.indexOf(part, from, Qt::CaseInsensitive);
}

int weight(QChar c) {
    const Weight full = weightOf(c);
    // Accents order letters between their bare neighbours.
    return full.letter * 65536 + full.accent;
}

} // namespace embedded::collation
