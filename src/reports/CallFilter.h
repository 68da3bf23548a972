#pragma once

#include <QString>

/// From which lines a report takes calls; the codes are stored in the database.
enum CallFilter {
    AllLinesAndMobiles = 0,
    AllLines = 1,
    AllMobiles = 2,
    AllLinesDataOnly = 3,
    AllLinesVoiceOnly = 4,
};

/// "All Lines (Data only)"; empty for an unknown code.
QString callFilterName(int callFilter);
