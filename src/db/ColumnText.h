#pragma once

#include <QString>

/// What letters a text column can hold.
enum class CodePage {
    Latin1252, ///< varchar under the Latin1_General collation
    Unicode,   ///< nvarchar
};

/// Why a column cannot hold a text: "The report caption is too long: 60 characters were entered, 50 fit." for
/// the field label "report caption". Empty when it can.
QString fittingProblem(const QString& fieldLabel, const QString& text, int maxLength, CodePage codePage);
/// Throws a Refusal of such a text, before the server cuts it or turns letters into question marks.
void requireFits(const QString& fieldLabel, const QString& text, int maxLength, CodePage codePage);
