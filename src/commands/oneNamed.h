#pragma once

#include <QList>
#include <QString>

/// What a command may be given by its ID or its exact title.
struct Named {
    int id;
    QString title;
};

/// The ID of the one that is named. Throws CommandFailure: for none with the words `none`, for several of the
/// `kind` ("schedules") with their IDs.
int oneNamed(const QList<Named>& all, const QString& name, const QString& kind, const QString& none);
/// "'March'", for a sentence.
QString quoted(const QString& title);
