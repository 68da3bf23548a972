#include "addresses/AddressFile.h"

#include "base/CsvLine.h"
#include "db/ForeignText.h"

#include <QFile>
#include <QSaveFile>
#include <algorithm>
#include <optional>
#include <stdexcept>

namespace {

/// The text up to the quote that closes the field; `at` is moved behind it. Nothing when none does.
std::optional<QString> quotedField(const QString& line, qsizetype& at) {
    QString field;
    for (++at; at < line.size(); ++at) {
        if (line[at] != '"') {
            field += line[at];
        } else if (at + 1 < line.size() && line[at + 1] == '"') {
            field += line[at++];
        } else {
            ++at;
            return field;
        }
    }
    return {};
}

/// Only a field that begins with a double quote is a quoted one. Empty when a quoted field does not end.
QStringList splitLine(const QString& line) {
    QStringList fields;
    for (qsizetype at = 0; at <= line.size(); ++at) {
        while (at < line.size() && line[at] == ' ') ++at;
        std::optional<QString> quoted;
        if (at < line.size() && line[at] == '"') {
            quoted = quotedField(line, at);
            if (!quoted) return {};
        }
        const qsizetype comma = line.indexOf(',', at);
        const qsizetype end = comma < 0 ? line.size() : comma;
        const QString rest = line.mid(at, end - at).trimmed();
        if (quoted && !rest.isEmpty()) return {};
        fields << quoted.value_or(rest);
        at = end;
    }
    return fields;
}

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

/// Plain fields as far as they read back so, the others in double quotes.
QString lineOf(const MailEntry& entry) {
    QStringList fields = fieldsOf(entry);
    for (QString& field : fields)
        if (splitLine(field) != QStringList{field}) field = csvLine({field});
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
        const QStringList fields = splitLine(line);
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
    return problemOf(entry).isEmpty() && splitLine(lineOf(entry)) == fieldsOf(entry);
}

void writeAddressFile(const QString& path, const QList<MailEntry>& entries) {
    QString text(QChar::ByteOrderMark); // or spreadsheets take it for Windows text
    for (const MailEntry& entry : entries) text += lineOf(entry) + "\r\n";
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text.toUtf8()) < 0 || !file.commit())
        throw std::runtime_error(file.errorString().toStdString());
}
