#pragma once

#include <QString>

/// What letters a text column can hold.
enum class CodePage {
    Latin1252, ///< varchar under the Latin1_General collation
    Unicode,   ///< nvarchar
};

/// Refuses a text that its column cannot hold, before the server cuts it or turns letters into question
/// marks. Throws DbError (8152): "The report caption is too long: 60 characters were entered, 50 fit."
/// for the field label "report caption".
void requireFits(const QString& fieldLabel, const QString& text, int maxLength, CodePage codePage);
