#pragma once

#include "base/WallClock.h"
#include "db/Connection.h"

#include <QMap>
#include <functional>

/// What a saving program works on: a few templates with reports, each with a schedule. Every save has a
/// version, which stands in all rows that it writes, so that rows tell which belong together.
namespace soak {

constexpr int worksPerSaver = 10;

struct Work {
    int templateVersion = 0; ///< 0 when there is none
    int scheduleVersion = 0;

    auto operator<=>(const Work&) const = default;
};

/// With the keys of its rows.
struct StoredWork : Work {
    int templateId = -1;
    int scheduleId = -1;
};

QString titleOf(const QString& saver, int number, int version);
int reportCount(int version);
/// Every second schedule is due at once, for the engine to run; the others never are.
WallClock runDate(int number, int version);

enum class Fault { Lost, Doubled, Half };
using Tell = std::function<void(Fault fault, const QString& what)>;

/// What a saver has stored, by number; `tell` hears of what is there twice or only in part.
QMap<int, StoredWork> readWorks(Connection& connection, const QString& saver, const Tell& tell);

} // namespace soak
