#pragma once

#include <QList>
#include <QString>
#include <QStringList>

/// A user of the analysis product on the demo server.
struct DemoUser {
    QString name;
    int level;
    int multiLevel = 0;
    QStringList costCentres{QString(), QString(), QString(), QString(), QString()};

    static constexpr auto password = "demo-password"; ///< everybody's
    /// At least one of each level 1 to 5, in the order of their levels.
    static const QList<DemoUser>& all();
};
