#include "commands/TerminalText.h"

#include <algorithm>
#include <iterator>

namespace {

struct Range {
    char32_t first, last;
};

template <std::size_t count>
bool isIn(const Range (&ranges)[count], char32_t letter) {
    return std::ranges::any_of(
        ranges, [&](const Range& range) { return letter >= range.first && letter <= range.last; });
}

/// Of these a terminal prints nothing, but does something.
bool isCommand(char32_t letter) {
    constexpr Range turnsDirection[]{{0x061C, 0x061C}, {0x200E, 0x200F}, {0x2028, 0x202E}, {0x2066, 0x206F}};
    return QChar::category(letter) == QChar::Other_Control || isIn(turnsDirection, letter);
}

/// East Asian letters and pictures, as far as terminals agree on them.
bool isWide(char32_t letter) {
    constexpr Range wide[]{{0x1100, 0x115F},   {0x231A, 0x231B},   {0x23E9, 0x23EC},   {0x2E80, 0x303E},
                           {0x3041, 0x4DBF},   {0x4E00, 0xA4CF},   {0xA960, 0xA97F},   {0xAC00, 0xD7A3},
                           {0xF900, 0xFAFF},   {0xFE30, 0xFE6F},   {0xFF00, 0xFF60},   {0xFFE0, 0xFFE6},
                           {0x1F1E6, 0x1F64F}, {0x1F680, 0x1F6FF}, {0x1F7E0, 0x1F7EB}, {0x1F900, 0x1F9FF},
                           {0x1FA70, 0x1FAFF}, {0x20000, 0x3FFFD}};
    return isIn(wide, letter);
}

QString fourDigits(char32_t letter) {
    return QString("\\u%1").arg(uint(letter), 4, 16, QChar('0'));
}

} // namespace

QString escaped(const QString& text) {
    QString shown;
    for (const QChar letter : text) {
        if (letter == '\n')
            shown += "\\n";
        else if (letter == '\r')
            shown += "\\r";
        else if (letter == '\t')
            shown += "\\t";
        else if (isCommand(letter.unicode()))
            shown += fourDigits(letter.unicode());
        else
            shown += letter;
    }
    return shown;
}

int cellsOf(const QString& text) {
    int cells = 0;
    for (const char32_t letter : text.toUcs4()) {
        const QChar::Category category = QChar::category(letter);
        const bool none = category == QChar::Mark_NonSpacing || category == QChar::Mark_Enclosing
                          || category == QChar::Other_Format;
        cells += none ? 0 : isWide(letter) ? 2 : 1;
    }
    return cells;
}

QString jsonText(const QJsonDocument& document) {
    return jsonText(document.toJson());
}

QString jsonText(const QByteArray& json) {
    QString text;
    for (const QChar letter : QString::fromUtf8(json))
        text +=
            letter != '\n' && isCommand(letter.unicode()) ? fourDigits(letter.unicode()) : QString(letter);
    return text;
}

QString tableText(const QStringList& captions, const QList<QStringList>& rows) {
    QList<QStringList> lines;
    lines.reserve(rows.size() + 1);
    if (!captions.isEmpty()) lines << captions;
    for (const QStringList& row : rows) {
        QStringList& line = lines.emplaceBack();
        std::ranges::transform(row, std::back_inserter(line), escaped);
    }
    QList<int> widths;
    for (const QStringList& line : lines)
        for (qsizetype i = 0; i < line.size(); ++i) {
            if (i == widths.size()) widths << 0;
            widths[i] = std::max(widths[i], cellsOf(line[i]));
        }
    QString text;
    for (const QStringList& line : lines) {
        QString shown;
        for (qsizetype i = 0; i < line.size(); ++i)
            shown += line[i] + QString(widths[i] - cellsOf(line[i]) + 2, ' ');
        while (shown.endsWith(' ')) shown.chop(1);
        text += shown + '\n';
    }
    return text;
}
