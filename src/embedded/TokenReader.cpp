#include "embedded/TokenReader.h"

#include "embedded/Errors.h"

#include <QSet>

namespace embedded {

QString ObjectName::toString() const {
    if (!database.isEmpty()) return database + '.' + schema + '.' + name;
    return schema.isEmpty() ? name : schema + '.' + name;
}

const Token& TokenReader::peek(int ahead) const {
    return m_tokens[std::min(m_at + ahead, m_tokens.size() - 1)];
}

Token TokenReader::take() {
    const Token token = peek();
    if (token.kind != Token::End) ++m_at;
    return token;
}

bool TokenReader::is(const char* word, int ahead) const {
    const Token& token = peek(ahead);
    return (token.kind == Token::Word || token.kind == Token::Symbol)
           && token.text.compare(QLatin1StringView(word), Qt::CaseInsensitive) == 0;
}

bool TokenReader::accept(const char* word) {
    if (!is(word)) return false;
    ++m_at;
    return true;
}

bool TokenReader::accept(const char* first, const char* second) {
    if (!is(first) || !is(second, 1)) return false;
    m_at += 2;
    return true;
}

void TokenReader::expect(const char* word) {
    if (!accept(word)) syntaxError();
}

void TokenReader::refuse(std::initializer_list<const char*> words, const char* before) const {
    for (const char* word : words)
        if (is(word)) refuse(before);
}

void TokenReader::refuse(const char* before) const {
    throw notSupported(before + peek().text.toUpper());
}

bool TokenReader::isName(int ahead) const {
    const Token& token = peek(ahead);
    if (token.kind == Token::Word) return !isReserved(token.text);
    return token.kind == Token::Bracketed || (token.kind == Token::Quoted && m_quotedIdentifiers);
}

QString TokenReader::takeName() {
    if (!isName()) syntaxError();
    return take().text;
}

ObjectName TokenReader::takeObjectName() {
    QStringList parts{takeName()};
    while (accept(".")) {
        if (is("."))
            parts.append(QString());
        else
            parts.append(takeName());
    }
    if (parts.size() > 3) throw notSupported("a name with a server: " + parts.join(u'.'));
    while (parts.size() < 3) parts.prepend(QString());
    return {parts[0], parts[1], parts[2]};
}

QStringList TokenReader::takeNameList() {
    QStringList names;
    expect("(");
    do {
        names.append(takeName());
        if (accept("desc")) continue;
        accept("asc");
    } while (accept(","));
    expect(")");
    return names;
}

QString TokenReader::takeVariable() {
    if (peek().kind != Token::Variable) syntaxError();
    return take().text;
}

qint64 TokenReader::takeInteger() {
    const bool negative = accept("-");
    if (peek().kind != Token::Integer) syntaxError();
    const qint64 number = take().text.toLongLong();
    return negative ? -number : number;
}

Type TokenReader::takeType() {
    QString name = takeName();
    if (accept(".")) name = takeName();
    QStringList arguments;
    if (accept("(")) {
        do arguments.append(is("max") ? take().text : QString::number(takeInteger()));
        while (accept(","));
        expect(")");
    }
    return Type::parse(name, arguments);
}

QString TokenReader::textSince(qsizetype position) const {
    return m_batch.mid(position, peek().position - position).trimmed();
}

void TokenReader::syntaxError() const {
    const Token& token = peek();
    if (token.kind == Token::Word && isReserved(token.text))
        throw serverError(156, "Incorrect syntax near the keyword '%1'.", token.text);
    const QString last = token.kind == Token::End && m_at > 0 ? m_tokens[m_at - 1].text : token.text;
    throw serverError(102, "Incorrect syntax near '%1'.", last);
}

bool TokenReader::isReserved(const QString& word) {
    static const QStringList list = QString(R"(
        add all alter and any as asc authorization backup begin between break browse bulk by cascade case check
        checkpoint close clustered coalesce collate column commit compute constraint contains continue convert
        create cross current current_date current_time current_timestamp current_user cursor database dbcc
        deallocate declare default delete deny desc disk distinct distributed double drop dump else end errlvl
        escape except exec execute exists exit external fetch file fillfactor for foreign freetext from full
        function goto grant group having holdlock identity identity_insert identitycol if in index inner insert
        intersect into is join key kill left like lineno load merge national nocheck nonclustered not null nullif
        of off offsets on open option or order outer over percent pivot plan primary print proc procedure public
        raiserror read readtext reconfigure references replication restore restrict return revert revoke right
        rollback rowcount rowguidcol rule save schema select session_user set setuser shutdown some statistics
        system_user table tablesample textsize then to top tran transaction trigger truncate tsequal union unique
        unpivot update updatetext use user values varying view waitfor when where while with writetext)")
                                        .simplified()
                                        .split(u' ');
    static const QSet<QString> words(list.begin(), list.end());
    return words.contains(word.toLower());
}

} // namespace embedded
