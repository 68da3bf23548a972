#pragma once

#include "ui/Palette.h"

/// What the desktop shows, before the program has colours of its own.
Palette::Scheme desktopScheme();
