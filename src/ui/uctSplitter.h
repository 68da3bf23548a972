#pragma once

#include <QSplitter>

/// A splitter that remembers where each user left it.
class uctSplitter : public QSplitter {
    Q_OBJECT

public:
    explicit uctSplitter(QWidget* parent = nullptr);
    /// Restores the place kept under the key and keeps every later one.
    void remember(const QString& key);
};
