#pragma once

#include "demo/walk/Walker.h"

/// Repeats a schedule as a series, and changes all of it at once.
void planSeries(Walker& walker);
