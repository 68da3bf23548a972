#pragma once

#include <QColor>
#include <QString>
#include <functional>

class QLabel;
class QLineEdit;
class QWidget;

/// The colour of a label's or frame's own text.
void setTextColour(QWidget& widget, const QColor& colour);
/// Does something when the label is clicked; the pointer says so.
void onClick(QLabel& label, const std::function<void()>& act);
/// Explains something in a quieter colour; wraps.
QLabel* hintLabel(QWidget* parent, const QString& text = {});
/// A note beside captions, in the same colour, on one line.
QLabel* subtleLabel(const QString& name, const QString& text, QWidget* parent);
/// Says what is wrong, see showProblem(); hidden while nothing is.
QLabel* problemLabel(QWidget* parent);
/// Hides the label for an empty text.
void showProblem(QLabel* label, const QString& text);
/// Whether the box takes input; one that does not looks like the window around it.
void setReadOnly(QLineEdit& box, bool readOnly);
