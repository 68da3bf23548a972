#pragma once

#include <QList>
#include <QString>

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

} // namespace embedded
