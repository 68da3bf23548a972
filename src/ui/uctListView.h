#pragma once

#include "ui/ListModel.h"

#include <QTreeView>
#include <optional>

/// The list of every screen: rows of a ListModel, sorted by a click on a header, with Enter or a
/// double-click for the row's main action and Delete to remove it. Keeps selection and scroll
/// position when rows change, and the column widths that the user sets.
class uctListView : public QTreeView {
    Q_OBJECT

public:
    explicit uctListView(QWidget* parent = nullptr);

    /// Names the columns; widths are remembered for each user under the key.
    void setColumns(std::vector<ListColumn> columns, const QString& key);
    /// What the empty list says in its middle.
    void setEmptyText(const QString& text) { m_emptyText = text; }
    void setRows(std::vector<ListRow> rows);
    /// See ListModel::update.
    void updateRows(std::vector<ListRow> rows, const std::vector<int>& gone);
    void setFilterWords(const QString& words);

    ListModel& rows() const { return *m_model; }
    std::optional<int> selectedId() const;
    QList<int> selectedIds() const; ///< in the order shown
    /// Selects the row of an ID and scrolls to it; false when no such row is shown.
    bool selectId(int id);
    /// The text of a cell of a row; empty when there is no such row.
    QString textOf(int id, int column) const;

    /// Sorts by a column; the column that is sorted by already turns its direction, unless it is kept.
    void sortBy(int column, bool keepOrder);
    int sortedColumn() const { return m_order ? m_order->sortColumn() : -1; }

signals:
    void rowActivated(int id); ///< Enter or double-click
    void deletePressed();
    void selectedIdChanged();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;

private:
    void restoreWidths();
    bool areUsable(const QStringList& widths) const;
    void storeWidths();
    void fitColumns();
    void changeRows(const std::function<void()>& change);
    void select(const QList<int>& ids);

    ListModel* m_model = nullptr;
    ListOrder* m_order = nullptr;
    QString m_emptyText;
    QString m_key; ///< of the widths in the settings store
    bool m_headerHeld = false;
    bool m_widthsSet = false;  ///< by the user, since he took hold of the header
    bool m_fitColumns = false; ///< until the user sets a width, columns share the list's width
};

/// Sorts a list by one column; see uctListView::sortBy.
void ListViewColumnSort(uctListView& list, int column, bool keepOrder);
/// Clears the selection of a list.
void ListViewUnselect(uctListView& list);
