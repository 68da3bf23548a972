#pragma once

class QScrollArea;

/// From now on a control that gets the focus by a key, a mnemonic or the program comes into view.
void followFocus(QScrollArea& area);
