#pragma once

#include <QString>
#include <QStringList>

/// Which calls a report about tagged calls leaves out; the codes are stored in the database.
enum CallTagging { AllTaggedCalls = 0, ExcludeBusiness = 1, ExcludePrivate = 2 };

/// The reports about tagged calls; no others ask.
bool isTaggedCallReport(int reportSubType);
/// "Exclude Business"; "Setting 7" for a code without a name.
QString callTaggingName(int setting);
/// The names of all codes, by code.
QStringList callTaggingNames();
