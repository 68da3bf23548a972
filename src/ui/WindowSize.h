#pragma once

class QWidget;

/// Gives a window room for lines of text, counted in average letters and in lines of its font; less where
/// the screen, with the window's own frame and the desktop's bars, is smaller.
void resizeToText(QWidget& window, int letters, int lines);
