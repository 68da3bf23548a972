#include "addresses/AddressFile.h"

#include "base/Csv.h"
#include "base/WholeFile.h"
#include "db/ForeignText.h"

#include <QFile>
#include <algorithm>
#include <stdexcept>

namespace {

bool isBlank(const QStringList& fields) {
    return !fields.isEmpty()
           && std::all_of(fields.begin(), fields.end(), [](const QString& field) { return field.isEmpty(); });
}

bool holdsAddress(const QStringList& fields) {
    return std::any_of(fields.begin(), fields.end(),
                       [](const QString& field) { return field.contains('@'); });
}

/// Captions hold neither addresses nor bare numbers.
bool isHeading(const QStringList& fields) {
    return !holdsAddress(fields) && std::none_of(fields.begin(), fields.end(), [](const QString& field) {
        bool isNumber = false;
        field.toLongLong(&isNumber);
        return isNumber;
    });
}

QStringList fieldsOf(const MailEntry& entry) {
    return {entry.billAccount, entry.costCentre, entry.level, entry.emailAddress};
}

QStringList fieldsIn(const QString& line) {
    QStringList fields = csvFields(line, Blanks::Trimmed);
    for (QString& field : fields) field = unguardFormula(field);
    return fields;
}

/// Plain fields as far as they read back so, the others in double quotes.
QString lineOf(const MailEntry& entry) {
    QStringList fields = fieldsOf(entry);
    for (QString& field : fields) {
        field = guardFormula(field);
        if (csvFields(field, Blanks::Trimmed) != QStringList{field}) field = csvLine({field});
    }
    return fields.join(',');
}

} // namespace

AddressFile readAddressFile(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) throw std::runtime_error(file.errorString().toStdString());
    const QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError) throw std::runtime_error(file.errorString().toStdString());

    AddressFile content;
    int number = 0;
    for (const QString& line : foreignText(bytes).replace("\r\n", "\n").replace('\r', '\n').split('\n')) {
        ++number;
        const QStringList fields = fieldsIn(line);
        if (isBlank(fields)) continue;
        if (content.columns == 0) {
            content.columns = qMax<qsizetype>(1, fields.size());
            if (!content.hasUsableColumns()) break;
            if (isHeading(fields)) {
                content.heading = fields;
                continue;
            }
        }
        content.lines.append({number, fields});
    }
    return content;
}

bool survivesExport(const MailEntry& entry) {
    return problemOf(entry).isEmpty() && fieldsIn(lineOf(entry)) == fieldsOf(entry);
}

void writeAddressFile(const QString& path, const QList<MailEntry>& entries) {
    QString text(QChar::ByteOrderMark); // or spreadsheets take it for Windows text
    for (const MailEntry& entry : entries) text += lineOf(entry) + "\r\n";
    if (const QString problem = writeWhole(path, text.toUtf8()); !problem.isEmpty())
        throw std::runtime_error(problem.toStdString());
}
