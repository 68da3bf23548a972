#pragma once

#include <QObject>

/// Whom a screen calls back; counts how often.
class Caller : public QObject {
    Q_OBJECT

public:
    int calls = 0;

public slots:
    void CalledBack() { ++calls; }
    void CalledbackParam() { ++calls; }
};
