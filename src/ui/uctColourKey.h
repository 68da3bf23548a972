#pragma once

#include <QWidget>

/// A line of colour swatches, each with the words that it stands for.
class uctColourKey : public QWidget {
    Q_OBJECT

public:
    explicit uctColourKey(const QString& title, QWidget* parent = nullptr);
    /// A swatch and its label, which takes the object name.
    void add(const QString& labelName, const QString& words, const QColor& colour);
};
