#include "db/Sql.h"

#include "db/Refusal.h"

#include <cmath>

namespace {

void refuseUnstorable(const QString& text) {
    if (text.contains(QChar(u'\0'))) throw Refusal("The text holds a character that cannot be stored (NUL).");
    // Drivers would put another character in its place without a word.
    if (!text.isValidUtf16())
        throw Refusal("The text holds a character that cannot be stored (half of a UTF-16 pair).");
}

QString quotedText(QString text) {
    refuseUnstorable(text);
    return "N'" + text.replace('\'', "''") + '\'';
}

} // namespace

QString Name::quoted() const {
    refuseUnstorable(m_name);
    if (m_name.isEmpty()) throw Refusal("A database or table name is empty.");
    return '[' + QString(m_name).replace(u']', "]]") + u']';
}

Sql Sql::join(const QList<Sql>& parts, const Sql& separator) {
    Sql joined;
    for (const Sql& part : parts) {
        if (!joined.isEmpty()) joined += separator;
        joined += part;
    }
    return joined;
}

Sql Sql::value(const QString& text) {
    return script(quotedText(text));
}

Sql Sql::value(const Secret& secret) {
    return {quotedText(secret.text), "N'***'"};
}

Sql Sql::value(const QDate& date) {
    return date.isValid() ? script(date.toString("''yyyyMMdd''")) : null();
}

Sql Sql::value(double number) {
    if (!std::isfinite(number)) throw Refusal("A number is not finite and cannot be stored.");
    return script(QString::number(number, 'g', 15));
}

Sql Sql::integer(qint64 number) {
    return script(QString::number(number));
}

Sql& Sql::operator+=(const Sql& other) {
    m_text += other.m_text;
    m_shown += other.m_shown;
    return *this;
}

Sql Sql::compose(std::string_view wording, const QList<Sql>& arguments) {
    Sql composed;
    std::size_t from = 0;
    for (const Sql& argument : arguments) {
        const std::size_t place = wording.find("{}", from);
        composed += script(QString::fromUtf8(wording.data() + from, qsizetype(place - from)));
        composed += argument;
        from = place + 2;
    }
    composed += script(QString::fromUtf8(wording.data() + from, qsizetype(wording.size() - from)));
    return composed;
}
