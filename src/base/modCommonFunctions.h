#pragma once

#include <QString>

/// At most three units, "2 Days, 0 Hours, 5 Mins"; nothing below a minute unless seconds are shown.
QString durationText(qint64 seconds, bool showSeconds);
