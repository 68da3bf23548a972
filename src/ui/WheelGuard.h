#pragma once

class QWidget;

/// From now on the wheel scrolls over the boxes in a widget that do not have the focus, instead of
/// changing their values unseen.
void guardFromWheel(QWidget& widget);
