#pragma once

#include "demo/walk/Walker.h"

class uctListView;

/// What a walker does with the controls of a screen.

uctListView& list(QWidget& screen, const QString& name);
/// The row of a list whose first column reads so; -1 when there is none.
int idOf(QWidget& screen, const QString& listName, const QString& text);
Walker::Act select(const QString& listName, const QString& text);
void type(QWidget& screen, const QString& box, const QString& text);
void tick(QWidget& screen, const QString& box);
void untick(QWidget& screen, const QString& box);
/// Ticks the first entry of a list with check boxes; ends the walk when there is none.
void tickFirst(QWidget& screen, const QString& checkList);
/// Chooses an entry of a combo box as a user does; ends the walk when it is missing.
void choose(QWidget& screen, const QString& combo, const QString& entry);
void chooseLast(QWidget& screen, const QString& combo);

/// Names a file in a file dialog.
Walker::Act chooseFile(const QString& path);

/// The main screen shows the schedule as "Pending", "Processing" or "Completed", or further than that: on a
/// slow server a state may come and go between two looks. Rows are read at each tick of the screen's timer; a
/// walker need not wait for it.
Walker::Ready statusIs(const QString& title, const QString& status);
