#include "base/Csv.h"

#include <QRegularExpression>
#include <optional>

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

/// Apostrophes are counted in, so that a field that has one of its own comes back with it.
bool beginsFormula(const QString& field) {
    static const QRegularExpression beginning("^'*[=+\\-@\\t\\r\\n]");
    return field.contains(beginning);
}

} // namespace

QString guardFormula(const QString& field) {
    return beginsFormula(field) ? '\'' + field : field;
}

QString unguardFormula(const QString& field) {
    return field.startsWith('\'') && beginsFormula(field) ? field.mid(1) : field;
}

QString csvLine(QStringList fields) {
    for (QString& field : fields) field = '"' + field.replace('"', "\"\"") + '"';
    return fields.join(',');
}

QStringList csvFields(const QString& line, Blanks blanks) {
    QStringList fields;
    for (qsizetype at = 0; at <= line.size(); ++at) {
        const qsizetype begin = at;
        while (at < line.size() && line[at] == ' ') ++at;
        std::optional<QString> quoted;
        if (at < line.size() && line[at] == '"') {
            quoted = quotedField(line, at);
            if (!quoted) return {};
        }
        const qsizetype comma = line.indexOf(',', at);
        const qsizetype end = comma < 0 ? line.size() : comma;
        if (quoted && !QStringView(line).mid(at, end - at).trimmed().isEmpty()) return {};
        const QString plain = line.mid(begin, end - begin);
        fields << quoted.value_or(blanks == Blanks::Kept ? plain : plain.trimmed());
        at = end;
    }
    return fields;
}
