#include "ui/SavePath.h"

#include "ui/Messages.h"

#include <QDir>
#include <QFileInfo>

QString askSavePath(Messages& messages, QWidget* parent, const QString& name, const QString& ending,
                    const QString& filter) {
    QString path = messages.saveFile(parent, QDir::home().filePath(name + ending), filter);
    if (path.isEmpty()) return {};
    if (QFileInfo(path).suffix().isEmpty()) path += ending;
    const QString question = "The file '%1' exists already. Do you want to replace it?";
    return QFile::exists(path) && !messages.ask(parent, question.arg(path)) ? QString() : path;
}
