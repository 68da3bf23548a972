#pragma once

#include <QLockFile>
#include <QString>

/// A name that no other desk has at the moment: it tells this computer and user apart from others, and is
/// held by a lock file as long as the object, and so the program, lives. Names things on the server that are
/// only one desk's, so that what a program has left that ended early can be told from what another one works
/// with.
class DeskMark {
public:
    DeskMark();

    const QString& name() const { return m_name; }
    /// Whether the name was given by a program on this computer that has ended.
    static bool isLeftOver(const QString& name);

private:
    QString m_name;
    QLockFile m_lock;
};
