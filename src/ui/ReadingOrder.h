#pragma once

class QWidget;

/// Screen readers walk the children of a widget in their stacking order, which is that of their making, and
/// turned round in splitters. From now on it is the order in which the layouts show them.
void putInReadingOrder(QWidget& screen);
