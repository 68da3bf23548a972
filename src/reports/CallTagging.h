#pragma once

#include <QString>
#include <QStringList>

/// Which calls a report about tagged calls (see isTaggedCallReport) leaves out; the codes are stored in the
/// database.
enum CallTagging { AllTaggedCalls = 0, ExcludeBusiness = 1, ExcludePrivate = 2 };

/// "Exclude Business"; "Setting 7" for a code without a name.
QString callTaggingName(int setting);
/// The names of all codes, by code.
QStringList callTaggingNames();
