#include "ui/uctSplitter.h"

#include "base/SettingsStore.h"

uctSplitter::uctSplitter(QWidget* parent) : QSplitter(parent) {
    setChildrenCollapsible(false);
}

void uctSplitter::remember(const QString& key) {
    restoreState(QByteArray::fromBase64(getSetting("VWT", "Splitters", key, "").toLatin1()));
    connect(this, &QSplitter::splitterMoved, this, [this, key] {
        saveSetting("VWT", "Splitters", key, QString::fromLatin1(saveState().toBase64()));
    });
}
