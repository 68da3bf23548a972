#pragma once

class Walker;

/// Looks at the agenda, drags a run to another hour and saves a picture and a calendar.
void planAgenda(Walker& walker);
