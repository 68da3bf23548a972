#pragma once

#include "embedded/Ast.h"
#include "embedded/Errors.h"

namespace embedded {

struct Token {
    enum Kind {
        Word,        ///< a bare identifier or keyword
        Bracketed,   ///< [name]; text is the name itself
        Quoted,      ///< "name"; a text when quoted identifiers are off
        Variable,    ///< @name or @@name, with its signs
        Integer,     ///< digits only
        Decimal,     ///< digits with a point
        Float,       ///< with an exponent
        Money,       ///< $1.50, without the sign
        Text,        ///< '…'
        UnicodeText, ///< N'…'
        Symbol,
        End
    };
    Kind kind = End;
    QString text;
    qsizetype position = 0; ///< of its first character in the batch
};

/// Splits a batch into tokens; comments and blanks are dropped. The last token is End.
/// Throws DbError 105 for a text or name that is not closed, 113 for a comment that is not closed.
QList<Token> tokenize(const QString& batch);

/// One more of something that is counted, as long as it lives; DbError 191 beyond what the stack can take.
class Level {
public:
    explicit Level(int& count) : m_count(count) {
        if (count >= 250) throw nestedTooDeeply();
        ++m_count;
    }
    Level(const Level&) = delete;
    Level& operator=(const Level&) = delete;
    ~Level() { --m_count; }

private:
    int& m_count;
};

/// The parser's place in its tokens, and the small steps that every rule of the grammar takes.
class TokenReader {
public:
    TokenReader(const QString& batch, bool quotedIdentifiers)
        : m_batch(batch), m_tokens(tokenize(batch)), m_quotedIdentifiers(quotedIdentifiers) {}

    const Token& peek(int ahead = 0) const;
    Token take();
    bool atEnd() const { return peek().kind == Token::End; }
    /// A keyword or symbol, whatever its case; a bracketed name is never a keyword.
    bool is(const char* word, int ahead = 0) const;
    bool accept(const char* word);
    /// Two keywords in a row.
    bool accept(const char* first, const char* second);
    void expect(const char* word);
    /// Throws notSupported when one of the words comes next; `before` is what stands in front of it.
    void refuse(std::initializer_list<const char*> words, const char* before = "") const;
    [[noreturn]] void refuse(const char* before = "") const;
    bool isName(int ahead = 0) const;
    QString takeName();
    /// Up to three parts, with empty ones allowed as in db..table.
    ObjectName takeObjectName();
    QStringList takeNameList(); ///< in brackets
    QString takeVariable();
    /// An optional minus sign and digits.
    qint64 takeInteger();
    Type takeType();
    /// The text from the given position up to the next token.
    QString textSince(qsizetype position) const;
    bool quotedIdentifiers() const { return m_quotedIdentifiers; }

    /// DbError 102, or 156 at a keyword.
    [[noreturn]] void syntaxError() const;
    static bool isReserved(const QString& word);

    const QString& text() const { return m_batch; }
    /// What is open around the next token. Trees are walked by recursion, so too many levels are DbError 191,
    /// long before the stack is used up.
    int statementLevels = 0;
    int expressionLevels = 0;
    int operators = 0; ///< of the outermost expression: its tree may grow a level with each

    /// The variables declared so far, wherever in the batch.
    std::vector<VariableDef> declared;

private:
    const QString& m_batch;
    QList<Token> m_tokens;
    qsizetype m_at = 0;
    bool m_quotedIdentifiers;
};

} // namespace embedded
