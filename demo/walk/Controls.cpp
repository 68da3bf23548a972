#include "demo/walk/Controls.h"

#include "schedules/frmMainScreen.h"
#include "ui/uctListView.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QDialog>
#include <QLineEdit>
#include <QTimer>
#include <QTreeView>

uctListView& list(QWidget& screen, const QString& name) {
    return control<uctListView>(screen, name);
}

int idOf(QWidget& screen, const QString& listName, const QString& text) {
    for (const ListRow& row : list(screen, listName).rows().rows())
        if (row.text(0) == text) return row.id;
    return -1;
}

Walker::Act select(const QString& listName, const QString& text) {
    return [=](QWidget& screen) { list(screen, listName).selectId(idOf(screen, listName, text)); };
}

void type(QWidget& screen, const QString& box, const QString& text) {
    control<QLineEdit>(screen, box).setText(text);
}

void tick(QWidget& screen, const QString& box) {
    auto& button = control<QAbstractButton>(screen, box);
    if (!button.isChecked()) button.click();
}

void untick(QWidget& screen, const QString& box) {
    auto& button = control<QAbstractButton>(screen, box);
    if (button.isChecked()) button.click();
}

void tickFirst(QWidget& screen, const QString& checkList) {
    auto& entries = *control<QTreeView>(control<QWidget>(screen, checkList), "lstEntries").model();
    if (entries.rowCount() == 0) missingControl(screen, "entry of " + checkList);
    entries.setData(entries.index(0, 0), Qt::Checked, Qt::CheckStateRole);
}

void choose(QWidget& screen, const QString& combo, const QString& entry) {
    auto& box = control<QComboBox>(screen, combo);
    const int place = box.findText(entry);
    if (place < 0) missingControl(screen, combo + " \"" + entry + '"');
    box.setCurrentIndex(place);
    emit box.activated(place);
}

void chooseLast(QWidget& screen, const QString& combo) {
    auto& box = control<QComboBox>(screen, combo);
    choose(screen, combo, box.itemText(box.count() - 1));
}

Walker::Act chooseFile(const QString& path) {
    return [path](QWidget& screen) {
        type(screen, "fileNameEdit", path);
        QTimer::singleShot(0, &screen, [&screen] { static_cast<QDialog&>(screen).done(QDialog::Accepted); });
    };
}

Walker::Ready statusIs(const QString& title, const QString& status) {
    static const QStringList road{"Pending", "Processing", "Completed"};
    return on("frmMainScreen", [=](QWidget& screen) {
        control<frmMainScreen>(screen, "frmMainScreen").FillScheduleList();
        for (const QString& name : {QString("lstSchedules"), QString("lstFinished")}) {
            const int id = idOf(screen, name, title);
            if (id == -1) continue;
            const QString shown = list(screen, name).textOf(id, 1).section(' ', 0, 0);
            return road.indexOf(shown) >= road.indexOf(status);
        }
        return false;
    });
}
