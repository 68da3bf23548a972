#pragma once

#include <QChar>
#include <algorithm>
#include <iterator>

/// Windows' Western European letters, which the varchar columns and many text files hold: Latin-1 with
/// letters of their own at 0x80 to 0x9F.
namespace CodePage1252 {

/// A place without a letter holds the control character of its number.
inline constexpr char16_t ownLetters[] = u"€\x81‚ƒ„…†‡ˆ‰Š‹Œ\x8dŽ\x8f\x90‘’“”•–—˜™š›œ\x9džŸ";

inline QChar letter(uchar byte) {
    return byte >= 0x80 && byte <= 0x9f ? QChar(ownLetters[byte - 0x80]) : QChar(byte);
}

inline bool holds(QChar letter) {
    const char16_t code = letter.unicode();
    if (code < 0x80 || (code >= 0xa0 && code <= 0xff)) return true;
    return code > 0xff && std::ranges::find(ownLetters, code) != std::end(ownLetters);
}

} // namespace CodePage1252
