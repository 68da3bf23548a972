#pragma once

#include "demo/walk/Walker.h"

/// Plans the road that a typical user takes through every screen.
void planRoad(Walker& walker, const QString& server);
