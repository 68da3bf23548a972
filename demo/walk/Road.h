#pragma once

#include "demo/walk/Walker.h"

struct Session;

/// Plans the road that a typical user takes through every screen.
void planRoad(Walker& walker, const Session& session, const QString& server);
