#include "db/OdbcResults.h"

#ifdef Q_OS_WIN
#include <windows.h>
#endif
#include <array>
#include <sql.h>
#include <sqlext.h>

static_assert(sizeof(SQLWCHAR) == sizeof(char16_t));

namespace {

constexpr std::size_t PieceLength = 4096;
using Piece = std::array<SQLWCHAR, PieceLength>;

const QChar* characters(const Piece& piece) {
    return reinterpret_cast<const QChar*>(piece.data());
}

bool readColumnNames(const OdbcHandle& statement, SQLSMALLINT count, QStringList& names) {
    for (SQLSMALLINT column = 1; column <= count; ++column) {
        Piece name = {}; // read up to its NUL: some drivers tell its length in other units
        const SQLRETURN code =
            SQLDescribeColW(statement.get(), SQLUSMALLINT(column), name.data(), SQLSMALLINT(name.size()),
                            nullptr, nullptr, nullptr, nullptr, nullptr);
        if (!SQL_SUCCEEDED(code)) return false;
        names += QString(characters(name));
    }
    return true;
}

/// The size that a driver declares for a column is no guide to the length of its text, so the value
/// is fetched in pieces until there are no more.
bool readValue(const OdbcHandle& statement, SQLSMALLINT column, QString& value) {
    Piece piece;
    for (;;) {
        SQLLEN bytesLeft = 0;
        const SQLRETURN code = SQLGetData(statement.get(), SQLUSMALLINT(column), SQL_C_WCHAR, piece.data(),
                                          SQLLEN(sizeof piece), &bytesLeft);
        if (code == SQL_NO_DATA) return true;
        if (!SQL_SUCCEEDED(code)) return false;
        if (bytesLeft == SQL_NULL_DATA) return true;
        const bool more = bytesLeft == SQL_NO_TOTAL || bytesLeft >= SQLLEN(sizeof piece);
        if (value.isNull()) value = "";
        value.append(characters(piece),
                     more ? qsizetype(PieceLength - 1) : bytesLeft / qsizetype(sizeof(QChar)));
        if (!more) return true;
    }
}

bool readRows(const OdbcHandle& statement, SQLSMALLINT columns, RecordSet& set) {
    SQLRETURN code = SQL_SUCCESS;
    while (SQL_SUCCEEDED(code = SQLFetch(statement.get()))) {
        for (SQLSMALLINT column = 1; column <= columns; ++column) {
            QString value;
            if (!readValue(statement, column, value)) return false;
            set.append(value);
        }
    }
    return code == SQL_NO_DATA;
}

} // namespace

bool readResult(const OdbcHandle& statement, Results& results) {
    SQLSMALLINT columns = 0;
    if (!SQL_SUCCEEDED(SQLNumResultCols(statement.get(), &columns))) return false;
    if (columns == 0) {
        SQLLEN count = -1;
        if (!SQL_SUCCEEDED(SQLRowCount(statement.get(), &count))) return false;
        if (count >= 0) results.counts.push_back(count);
        return true;
    }
    QStringList names;
    if (!readColumnNames(statement, columns, names)) return false;
    RecordSet set(names);
    if (!readRows(statement, columns, set)) return false;
    results.sets.push_back(std::move(set));
    return true;
}
