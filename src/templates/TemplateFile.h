#pragma once

#include "db/Connection.h"
#include "templates/TemplateHeader.h"

#include <QJsonObject>
#include <array>

/// A template as a file holds it: its row, and the rows of other tables that are its own. The values of these
/// stand under the names of their columns, so that NULL and an empty text differ.
struct FiledTemplate {
    enum Part { Reports, CostCentres, ExcludedNumbers };
    static constexpr int partCount = 3;

    TemplateHeader header; ///< without a key as long as it travels
    std::array<QList<QJsonObject>, partCount> rows;

    bool holdsSameRows(const FiledTemplate& other) const;
};

/// Files by which templates travel to another server or account: one JSON document with a version, every
/// column by its name. What a column cannot hold, and what is not known, is refused with the template and the
/// field that it is about.
namespace templateFile {

constexpr qint64 longest = 50'000'000; ///< bytes

/// Templates as they are stored, all as of one moment. Throws a Refusal when one is gone.
QList<FiledTemplate> load(Connection& connection, const QList<int>& ids);
/// What writes the rows of templates, which have their keys by now, into their tables.
QList<Sql> insertions(const QList<FiledTemplate>& templates);
/// The document. Throws a Refusal when it could not be read again: for what other programs stored, and when
/// it is too long.
QByteArray write(const QList<FiledTemplate>& templates);
/// The templates of a document. Throws a Refusal.
QList<FiledTemplate> read(const QByteArray& document);
/// The same of a file. Throws a Refusal, also when it cannot be read.
QList<FiledTemplate> readFile(const QString& path);
/// Throws a Refusal of a null that this server's column does not take; older tables took it.
void checkNulls(Connection& connection, const QList<FiledTemplate>& templates);

} // namespace templateFile
