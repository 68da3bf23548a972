#pragma once

#include <QByteArrayView>
#include <QString>

/// Latin1_General_CI_AS: upper and lower case are alike, accents count, blanks at the end do not.
/// Sorts signs before digits before letters, and an accented letter right behind its bare one.
namespace embedded::collation {

int compare(QByteArrayView utf8A, QByteArrayView utf8B);
int compare(const QString& a, const QString& b);
inline bool equal(const QString& a, const QString& b) {
    return compare(a, b) == 0;
}
/// Without the blanks at its end, which do not count.
QStringView trimmed(QStringView text);
/// The same text for all texts that compare equal; a key for hashes.
QString fold(const QString& text);
/// Where `part` begins in `text`, from the given place on; -1 when nowhere.
qsizetype indexOf(const QString& text, const QString& part, qsizetype from = 0);
/// LIKE with %, _, [a-z] and [^…]; `escape` is null when there is none.
bool matchesLike(QStringView text, QStringView pattern, QChar escape = {});
/// Place of one character in the order, for ranges such as [a-f].
int weight(QChar c);

} // namespace embedded::collation
