#pragma once

#include "base/WallClock.h"

/// A point of time as the clock on the wall shows it, and by one that nobody sets: lengths are told by the
/// latter, since the former jumps by an hour twice a year.
struct Moment {
    WallClock wall;
    qint64 steady = 0; ///< seconds; they go on while the computer sleeps

    static Moment now();
    qint64 secsTo(const Moment& later) const { return later.steady - steady; }
};
