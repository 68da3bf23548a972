#pragma once

#include "ui/ListModel.h"

#include <QTreeView>
#include <optional>

/// The list of every screen: rows of a ListModel, sorted by a click on a header, with Enter or a
/// double-click for the row's main action and Delete to remove it. Keeps selection and scroll
/// position when rows change. Widths, order, choice and sorting of the columns are the user's, and kept.
class uctListView : public QTreeView {
    Q_OBJECT

public:
    explicit uctListView(QWidget* parent = nullptr);

    /// Names the columns; how the user arranges them is remembered under the key.
    void setColumns(std::vector<ListColumn> columns, const QString& key);
    /// What the empty list says in its middle.
    void setEmptyText(const QString& text) { m_emptyText = text; }
    void setRows(std::vector<ListRow> rows);
    /// See ListModel::update.
    void updateRows(std::vector<ListRow> rows, const std::vector<int>& gone);
    void setFilterWords(const QString& words);
    /// How many rows the filter leaves.
    int shownCount() const { return m_order->rowCount(); }
    /// What its context menu offers before copying. The main action, if any, has Enter, the removing one Del.
    void offer(const QList<QAction*>& actions, QAction* main, QAction* removing = nullptr);

    ListModel& rows() const { return *m_model; }
    std::optional<int> selectedId() const;
    QList<int> selectedIds() const; ///< in the order shown
    /// Selects the row of an ID and scrolls to it; false when no such row is shown.
    bool selectId(int id);
    /// The same for several, as far as they are shown.
    void selectIds(const QList<int>& ids);
    /// Scrolls to the row of an ID, if it is shown.
    void showId(int id);
    /// The text of a cell of a row; empty when there is no such row.
    QString textOf(int id, int column) const;

    /// Sorts by a column; the column that is sorted by already turns its direction, unless it is kept.
    void sortBy(int column, bool keepOrder);
    /// The order in which the list opens until its user chooses another.
    void sortAtFirst(int column);
    /// The user may drag the selected rows to another place of a list that shows its own order.
    void setRowsMovable();
    /// The user may hide columns, from the header's menu, and move them.
    void setColumnsMovable();
    int sortedColumn() const { return m_order ? m_order->sortColumn() : -1; }

signals:
    void rowActivated(int id); ///< Enter or double-click
    void deletePressed();
    void rowsDropped(int before); ///< the selected ones, before the row of this number; at the end: the count
    void selectedIdChanged();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;

private:
    void restoreLayout();
    bool isLayoutUsable() const;
    void storeLayout();
    void fitColumns();
    void fillHeaderMenu();
    void offerColumn(int column, bool shown);
    void changeRows(const std::function<void()>& change);
    QModelIndex indexOf(int id) const;

    ListModel* m_model = nullptr;
    ListOrder* m_order = nullptr;
    QString m_emptyText;
    QString m_key; ///< of the layout in the settings store
    bool m_headerHeld = false;
    bool m_widthsSet = false;  ///< by the user, since he took hold of the header
    bool m_fitColumns = false; ///< until the user sets a width, columns share the list's width
};

/// Sorts a list by one column; see uctListView::sortBy.
void ListViewColumnSort(uctListView& list, int column, bool keepOrder);
/// Clears the selection of a list.
void ListViewUnselect(uctListView& list);
