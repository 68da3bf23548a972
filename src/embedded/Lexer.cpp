#include "embedded/Errors.h"
#include "embedded/TokenReader.h"

namespace embedded {

namespace {

class Lexer {
public:
    explicit Lexer(const QString& batch) : m_batch(batch) {}

    QList<Token> run() {
        QList<Token> tokens;
        for (skipBlanks(); m_at < m_batch.size(); skipBlanks()) {
            const qsizetype start = m_at;
            Token token = next();
            token.position = start;
            tokens.append(token);
        }
        tokens.append({Token::End, {}, m_batch.size()});
        return tokens;
    }

private:
    QChar peek(qsizetype ahead = 0) const {
        return m_at + ahead < m_batch.size() ? m_batch[m_at + ahead] : QChar();
    }

    static bool startsName(QChar c) { return c.isLetter() || c == u'_' || c == u'#'; }
    static bool continuesName(QChar c) {
        return c.isLetterOrNumber() || c == u'_' || c == u'#' || c == u'$' || c == u'@';
    }

    void skipBlanks() {
        for (; m_at < m_batch.size(); ++m_at) {
            if (peek() == u'-' && peek(1) == u'-') {
                while (m_at < m_batch.size() && peek() != u'\n' && peek() != u'\r') ++m_at;
            } else if (peek() == u'/' && peek(1) == u'*') {
                skipComment();
            } else if (!peek().isSpace() && peek() != QChar(0xfeff)) {
                return;
            }
        }
    }

    /// Comments nest. Leaves the position on the closing slash.
    void skipComment() {
        int depth = 0;
        for (; m_at < m_batch.size(); ++m_at) {
            if (peek() == u'/' && peek(1) == u'*')
                ++depth, ++m_at;
            else if (peek() == u'*' && peek(1) == u'/') {
                ++m_at;
                if (--depth == 0) return;
            }
        }
        throw DbError(113, "Missing end comment mark '*/'.");
    }

    Token next() {
        const QChar c = peek();
        if (c == u'\'') return {Token::Text, delimited(u'\'')};
        if ((c == u'N' || c == u'n') && peek(1) == u'\'') {
            ++m_at;
            return {Token::UnicodeText, delimited(u'\'')};
        }
        if (c == u'[') return {Token::Bracketed, delimited(u']')};
        if (c == u'"') return {Token::Quoted, delimited(u'"')};
        if (c == u'@') return {Token::Variable, name()};
        if (c == u'0' && (peek(1) == u'x' || peek(1) == u'X')) throw notSupported("binary values");
        if (c.isDigit() || (c == u'.' && peek(1).isDigit())) return number();
        if (c == u'$' && peek(1).isDigit()) {
            ++m_at;
            return {Token::Money, number().text};
        }
        if (startsName(c)) return {Token::Word, name()};
        return symbol();
    }

    /// Reads up to the closing sign; a doubled sign stands for itself.
    QString delimited(QChar close) {
        QString text;
        for (++m_at; m_at < m_batch.size(); ++m_at) {
            if (peek() != close) {
                text += peek();
            } else if (peek(1) == close) {
                text += m_batch[m_at++];
            } else {
                ++m_at;
                return text;
            }
        }
        throw serverError(105, "Unclosed quotation mark after the character string '%1'.", text);
    }

    QString name() {
        const qsizetype start = m_at++;
        while (continuesName(peek())) ++m_at;
        return m_batch.mid(start, m_at - start);
    }

    Token number() {
        const qsizetype start = m_at;
        Token::Kind kind = Token::Integer;
        while (peek().isDigit()) ++m_at;
        if (peek() == u'.') {
            kind = Token::Decimal;
            for (++m_at; peek().isDigit();) ++m_at;
        }
        const qsizetype sign = peek(1) == u'-' || peek(1) == u'+' ? 1 : 0;
        if ((peek() == u'e' || peek() == u'E') && peek(1 + sign).isDigit()) {
            kind = Token::Float;
            for (m_at += 1 + sign; peek().isDigit();) ++m_at;
        }
        return {kind, m_batch.mid(start, m_at - start)};
    }

    Token symbol() {
        static const QStringList pairs{"<>", "<=", ">=", "!=", "!<", "!>", "+=", "-=", "*=", "/=", "::"};
        const QString pair = m_batch.mid(m_at, 2);
        const qsizetype length = pairs.contains(pair) ? 2 : 1;
        m_at += length;
        return {Token::Symbol, pair.left(length)};
    }

    const QString& m_batch;
    qsizetype m_at = 0;
};

} // namespace

QList<Token> tokenize(const QString& batch) {
    return Lexer(batch).run();
}

} // namespace embedded
