#include "schedules/ProjectHistory.h"

#include "base/CommandLine.h"
#include "base/Csv.h"
#include "base/Session.h"
#include "base/WholeFile.h"
#include "db/ServerText.h"

#include <QFile>
#include <QStringDecoder>

namespace projectHistory {

namespace {

constexpr qint64 largestFile = 64 * 1024; // bytes; fifteen names never come near it
constexpr int longestName = 128;

QString path(const Session& session) {
    return session.log.file("CallHistory.csv");
}

bool isPlainName(const QString& name) {
    return !name.trimmed().isEmpty() && name.size() <= longestName
           && std::none_of(name.begin(), name.end(), [](QChar letter) { return letter < ' '; });
}

/// Nothing when a line is not one that remember() writes.
std::optional<QList<Entry>> parse(const QByteArray& content) {
    QStringDecoder utf8(QStringDecoder::Utf8);
    const QString text = utf8(content);
    if (utf8.hasError()) return {};
    QList<Entry> entries;
    for (const QString& line : text.split('\n')) {
        if (line.trimmed().isEmpty()) continue;
        const QStringList fields = csvFields(line.trimmed());
        if (fields.size() != 2 || !isPlainName(fields[0])) return {};
        const auto lastUsed = WallClock::fromStored(fields[1]);
        if (!lastUsed) return {};
        entries << Entry{fields[0], *lastUsed};
    }
    return entries;
}

} // namespace

QList<Entry> read(const Session& session) {
    QFile file(path(session));
    if (!file.exists()) return {};
    const auto ignored = [&](const QString& why) {
        session.log.write("ProjectHistory.Read", 1, file.fileName() + " is ignored: " + why);
        return QList<Entry>();
    };
    if (!file.open(QIODevice::ReadOnly)) return ignored(file.errorString());
    if (file.size() > largestFile) return ignored(QString("it holds %1 bytes").arg(file.size()));
    const std::optional<QList<Entry>> entries = parse(file.readAll());
    return entries ? entries->first(qMin<qsizetype>(entries->size(), mostEntries)) : ignored("it is damaged");
}

void remember(const Session& session, const QString& project, const WallClock& when) {
    if (!isPlainName(project)) return;
    QList<Entry> entries = read(session);
    entries.removeIf([&](const Entry& entry) { return sameOnServer(entry.project, project); });
    entries.prepend({project, when});
    QByteArray content;
    for (const Entry& entry : entries.first(qMin<qsizetype>(entries.size(), mostEntries)))
        content += csvLine({entry.project, entry.lastUsed.stored()}).toUtf8() + "\r\n";
    if (const QString problem = writeWhole(path(session), content); !problem.isEmpty())
        session.log.write("ProjectHistory.Remember", 1, problem);
}

} // namespace projectHistory
