#include "commands/oneNamed.h"

#include "commands/CommandFailure.h"
#include "commands/TerminalText.h"

#include <QStringList>

int oneNamed(const QList<Named>& all, const QString& name, const QString& kind, const QString& none) {
    QStringList ids;
    for (const Named& each : all) {
        const QString id = QString::number(each.id);
        if (each.title == name || id == name) ids << id;
    }
    if (ids.isEmpty()) throw CommandFailure(ExitCode::NotFound, none);
    if (ids.size() == 1) return ids.first().toInt();
    throw CommandFailure(
        ExitCode::NotFound,
        QString("%1 may be any of the %2 with the IDs %3. Name one by its ID; where that is another one's "
                "title, that one has to be renamed first.")
            .arg(quoted(name), kind, ids.join(", ")));
}

QString quoted(const QString& title) {
    return '\'' + escaped(title) + '\'';
}
