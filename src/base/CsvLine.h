#pragma once

#include <QStringList>

/// A line of a CSV file without its end: every field in double quotes, those inside doubled.
inline QString csvLine(QStringList fields) {
    for (QString& field : fields) field = '"' + field.replace('"', "\"\"") + '"';
    return fields.join(',');
}
