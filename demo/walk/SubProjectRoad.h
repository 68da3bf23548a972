#pragma once

class Walker;

/// Gives cost centres addresses and schedules a run for each of them.
void planSubProjects(Walker& walker);
