#pragma once

#include "demo/walk/Walker.h"

/// The template that planTemplate makes.
inline constexpr auto walkedTemplate = "Walked: all kinds of reports";

/// Presses the button of the screen that leads to the project chooser, and opens the first demo project.
void planProject(Walker& walker, const QString& button, const QString& screenName);
/// Makes a template with a report of every type that the first demo project offers.
void planTemplate(Walker& walker);
/// Gives cost centres addresses and schedules a run for each of them.
void planSubProjects(Walker& walker);
