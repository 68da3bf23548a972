#include "numbers/NumberFile.h"

#include "base/Csv.h"
#include "base/WholeFile.h"
#include "db/ForeignText.h"
#include "numbers/NumberTable.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <algorithm>
#include <stdexcept>

namespace numberFile {

namespace {

constexpr qint64 LargestFile = 64 * 1024 * 1024;

[[noreturn]] void refuse(const QString& path, const QString& reason) {
    throw std::runtime_error(
        QString("The file \"%1\" %2").arg(QDir::toNativeSeparators(path), reason).toStdString());
}

/// Control characters other than those that part lines, pages and columns, or end a file.
bool isBinary(const QString& text) {
    return std::ranges::any_of(text, [](QChar letter) {
        return letter < u' ' && letter != u'\t' && letter != u'\r' && letter != u'\n' && letter != u'\f'
               && letter != u'\x1a';
    });
}

/// A sign and no letters make at most a sum of a number; other programs have to read it as it stands.
bool isDialled(const QString& number) {
    return (number.startsWith('+') || number.startsWith('-')) && !holdsLetters(number);
}

} // namespace

QStringList numbersIn(const QString& text) {
    static const QRegularExpression between("[\\v\\t,]"); // any line end
    QStringList numbers;
    for (QString number : text.split(between)) {
        number.removeIf([](QChar letter) { return letter == u'"' || letter.isSpace(); });
        if (!number.isEmpty()) numbers << number;
    }
    return numbers;
}

QStringList read(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) refuse(path, "cannot be read: " + file.errorString());
    if (file.size() > LargestFile) refuse(path, "is too large for a list of telephone numbers.");
    QString text = foreignText(file.readAll());
    if (isBinary(text)) refuse(path, "is not a list of telephone numbers: it holds no plain text.");
    QStringList numbers = numbersIn(text.remove(u'\x1a'));
    for (QString& number : numbers) number = unguardFormula(number);
    return numbers;
}

void write(const QString& path, const QStringList& numbers) {
    QByteArray content;
    for (const QString& number : numbers)
        content += (isDialled(number) ? number : guardFormula(number)).toUtf8() + "\r\n";
    if (const QString problem = writeWhole(path, content); !problem.isEmpty())
        refuse(path, "cannot be written: " + problem);
}

} // namespace numberFile
