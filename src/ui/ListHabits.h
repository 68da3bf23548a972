#pragma once

class QAbstractItemView;
class QModelIndex;

/// What all lists do alike: Ctrl+C copies the selected rows, or all rows shown when none is selected, with
/// all their columns and tabs between; who reaches the list by a key finds its current row selected.
void giveListHabits(QAbstractItemView& list);

/// Selects the current row, or the first one, of a list without a selection, so that Enter and the arrow
/// keys act on the row that one sees.
void selectCurrentRow(QAbstractItemView& list);
/// Selects one row and nothing else, and scrolls to it, whatever keys are down: the view itself would add it
/// to the selection while the Ctrl of Ctrl+S is still held.
void selectAlone(QAbstractItemView& list, const QModelIndex& index);
