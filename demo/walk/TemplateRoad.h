#pragma once

#include "demo/walk/Walker.h"

/// The template that planTemplates makes for the project "Brightwater".
inline constexpr auto walkedTemplate = "Walked: all kinds of reports";

/// Presses the button of the screen that leads to the project chooser, and opens the demo project whose
/// name begins so.
enum Hearing { FirstTime, ToldBefore };
/// Which projects are left out is told at the first choice.
void planProject(Walker& walker, const QString& button, const QString& screenName, const QString& project,
                 Hearing hearing = ToldBefore);
/// Makes templates with reports of every type, for projects of the bills that offer them, and sets
/// parameters in every group that there is.
void planTemplates(Walker& walker);
