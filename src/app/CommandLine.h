#pragma once

#include <QStringList>

/// The fields of a command line split at ","; a field in double quotes may hold commas, and two double
/// quotes in it stand for one.
inline QStringList splitCommandLine(const QString& line) {
    QStringList fields{QString()};
    bool quoted = false;
    for (qsizetype i = 0; i < line.size(); ++i) {
        if (line[i] == '"') {
            if (quoted && line.mid(i + 1, 1) == "\"") fields.last() += line[i++];
            else quoted = !quoted;
        } else if (line[i] == ',' && !quoted) {
            fields << QString();
        } else {
            fields.last() += line[i];
        }
    }
    return fields;
}
