#include "ui/SavePath.h"

#include "ui/Messages.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <algorithm>

namespace {

/// ".png" of "PNG pictures (*.png)"; empty for all files.
QString endingOf(const QString& filter) {
    static const QRegularExpression form("\\*(\\.\\w+)\\)");
    return form.match(filter).captured(1);
}

} // namespace

QString pickSavePath(Messages& messages, QWidget* parent, const QString& suggested, const QString& filter) {
    QString chosen;
    QString path = messages.saveFile(parent, suggested, filter, chosen);
    if (path.isEmpty()) return {};
    const auto endsOn = [&](const QString& ending) {
        return !ending.isEmpty() && path.endsWith(ending, Qt::CaseInsensitive);
    };
    const QStringList filters = filter.split(";;");
    const auto isTyped = [&](const QString& each) { return endsOn(endingOf(each)); };
    const QString proposed = '.' + QFileInfo(suggested).suffix();
    QString wanted = endingOf(chosen.isEmpty() ? filters.first() : chosen);
    if (wanted.compare(proposed, Qt::CaseInsensitive) == 0) wanted = proposed;
    if (wanted.isEmpty() && QFileInfo(path).suffix().isEmpty()) wanted = proposed;
    if (wanted.isEmpty() || endsOn(wanted)) return path;
    if (endsOn(proposed))
        path.chop(proposed.size());
    else if (std::ranges::any_of(filters, isTyped))
        return path;
    if (path.endsWith('.')) path.chop(1);
    return path + wanted;
}

QString askSavePath(Messages& messages, QWidget* parent, const QString& name, const QString& ending,
                    const QString& filter) {
    const QString path = pickSavePath(messages, parent, QDir::home().filePath(name + ending), filter);
    const QString question = "The file '%1' exists already. Do you want to replace it?";
    return QFile::exists(path) && !messages.ask(parent, question.arg(path)) ? QString() : path;
}
