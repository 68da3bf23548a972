#include "ui/uctListView.h"

#include "base/SettingsStore.h"
#include "ui/ListHabits.h"
#include "ui/Palette.h"

#include <QAction>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>
#include <QScreen>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <algorithm>

namespace {

constexpr const char* layoutSection = "ListLayout";
/// The first character of a stored layout: whether the columns share the list's width.
constexpr QChar sharedWidths = '*';
constexpr QChar ownWidths = '=';

/// Numbers at the right would touch the texts of the next column.
class ListDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
        QStyledItemDelegate::initStyleOption(option, index);
        if (option->displayAlignment & Qt::AlignRight) option->text += "   ";
    }
};

} // namespace

uctListView::uctListView(QWidget* parent) : QTreeView(parent) {
    setRootIsDecorated(false);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setTextElideMode(Qt::ElideRight);
    header()->setSectionsClickable(true);
    header()->setStretchLastSection(true);
    header()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    header()->viewport()->installEventFilter(this);
    giveListHabits(*this);
    setItemDelegate(new ListDelegate(this));
    connect(header(), &QHeaderView::sectionClicked, this, [this](int column) {
        sortBy(column, false);
        storeLayout();
    });
}

void uctListView::setColumns(std::vector<ListColumn> columns, const QString& key) {
    m_model = new ListModel(std::move(columns), this);
    m_order = new ListOrder(m_model, this);
    setModel(m_order);
    m_key = key;
    header()->setSectionsMovable(false);
    restoreLayout();
    connect(header(), &QHeaderView::sectionResized, this, [this] { m_widthsSet = m_headerHeld; });
    connect(header(), &QHeaderView::sectionMoved, this, &uctListView::storeLayout);
}

void uctListView::restoreLayout() {
    const QString stored = getSetting("VWT", layoutSection, m_key, "");
    const QByteArray standard = header()->saveState();
    const bool usable =
        header()->restoreState(QByteArray::fromBase64(stored.mid(1).toLatin1())) && isLayoutUsable();
    if (!usable) header()->restoreState(standard);
    m_fitColumns = !usable || stored.front() == sharedWidths;
    if (m_fitColumns) fitColumns();
    const int sorted = header()->sortIndicatorSection();
    if (usable && sorted < header()->count()) m_order->sort(sorted, header()->sortIndicatorOrder());
}

/// Whether a user can have made the layout: there is a column to be seen, and none is wider than the desktop.
bool uctListView::isLayoutUsable() const {
    const int widest = QGuiApplication::primaryScreen()->virtualSize().width();
    int shown = 0;
    for (int column = 0; column < header()->count(); ++column) {
        if (header()->isSectionHidden(column)) continue;
        const int width = header()->sectionSize(column);
        if (width < header()->minimumSectionSize() || width > widest) return false;
        ++shown;
    }
    return shown > 0 && header()->count() == m_model->columnCount();
}

void uctListView::storeLayout() {
    saveSetting("VWT", layoutSection, m_key,
                (m_fitColumns ? sharedWidths : ownWidths)
                    + QString::fromLatin1(header()->saveState().toBase64()));
}

void uctListView::setColumnsMovable() {
    header()->setSectionsMovable(true);
    header()->setContextMenuPolicy(Qt::ActionsContextMenu);
    fillHeaderMenu();
}

void uctListView::setRowsMovable() {
    setDragDropMode(InternalMove);
    setDragDropOverwriteMode(false);
}

/// Whoever owns the rows moves them: as far as the view is concerned, nothing was moved.
void uctListView::dropEvent(QDropEvent* event) {
    const QModelIndex row = indexAt(event->position().toPoint());
    const int before = row.isValid() ? row.row() + (dropIndicatorPosition() == BelowItem) : shownCount();
    event->setDropAction(Qt::CopyAction);
    event->accept();
    stopAutoScroll();
    setState(NoState);
    viewport()->update();
    emit rowsDropped(before);
}

void uctListView::fillHeaderMenu() {
    for (int column = 0; column < m_model->columnCount(); ++column) {
        auto* shown = new QAction(m_model->columnList()[std::size_t(column)].caption, this);
        shown->setCheckable(true);
        shown->setChecked(!header()->isSectionHidden(column));
        connect(shown, &QAction::triggered, this, [this, column](bool on) { offerColumn(column, on); });
        header()->addAction(shown);
    }
}

/// The last column stays: a list without a header could not be mended.
void uctListView::offerColumn(int column, bool shown) {
    if (!shown && header()->hiddenSectionCount() + 1 == header()->count())
        return header()->actions()[column]->setChecked(true);
    header()->setSectionHidden(column, !shown);
    if (m_fitColumns) fitColumns();
    storeLayout();
}

/// A mouse button that is down says nothing: a double-click that opens the screen still holds it. The user
/// sets widths while he holds the header itself.
bool uctListView::eventFilter(QObject* watched, QEvent* event) {
    if (watched == header()->viewport()) {
        const QEvent::Type type = event->type();
        if (type == QEvent::MouseButtonPress || type == QEvent::MouseButtonDblClick)
            m_headerHeld = static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton;
        if (type == QEvent::MouseButtonRelease) {
            m_headerHeld = false;
            if (std::exchange(m_widthsSet, false)) {
                m_fitColumns = false;
                storeLayout();
            }
        }
    }
    return QTreeView::eventFilter(watched, event);
}

void uctListView::fitColumns() {
    const std::vector<ListColumn>& columns = m_model->columnList();
    int characters = 0;
    for (int i = 0; i < int(columns.size()); ++i)
        if (!header()->isSectionHidden(i)) characters += columns[std::size_t(i)].width;
    for (int i = 0; i < int(columns.size()); ++i) // the last one shown takes what is left
        if (!header()->isSectionHidden(i))
            header()->resizeSection(i, columns[std::size_t(i)].width * viewport()->width() / characters);
}

void uctListView::resizeEvent(QResizeEvent* event) {
    QTreeView::resizeEvent(event);
    if (m_model && m_fitColumns && !m_headerHeld) fitColumns();
}

void uctListView::setRows(std::vector<ListRow> rows) {
    changeRows([&] { m_model->setRows(std::move(rows)); });
}

void uctListView::updateRows(std::vector<ListRow> rows, const std::vector<int>& gone) {
    if (!rows.empty() || !gone.empty()) changeRows([&] { m_model->update(std::move(rows), gone); });
}

/// Scrolling and selection stay as they are.
void uctListView::changeRows(const std::function<void()>& change) {
    const int scrolled = verticalScrollBar()->value();
    const QList<int> selected = selectedIds();
    change();
    if (selectedIds() != selected) { // the model was reset
        selectIds(selected);
        if (selectedIds() != selected) emit selectedIdChanged();
    }
    verticalScrollBar()->setValue(scrolled);
    viewport()->update(); // the empty text comes or goes
}

void uctListView::setFilterWords(const QString& words) {
    const QList<int> selected = selectedIds();
    selectionModel()->clear(); // or the view selects a neighbour of each row that goes
    m_order->setFilterWords(words);
    selectIds(selected);
    viewport()->update();
}

void uctListView::offer(const QList<QAction*>& actions, QAction* main, QAction* removing) {
    if (main) {
        main->setShortcuts({Qt::Key_Return, Qt::Key_Enter});
        main->setShortcutContext(Qt::WidgetShortcut);
    }
    if (removing) {
        removing->setShortcut(QKeySequence::Delete);
        removing->setShortcutContext(Qt::WidgetShortcut);
    }
    auto* line = new QAction(this);
    line->setSeparator(true);
    insertActions(QWidget::actions().first(), actions + QList<QAction*>{line});
}

std::optional<int> uctListView::selectedId() const {
    const QList<int> ids = selectedIds();
    return ids.isEmpty() ? std::nullopt : std::optional(ids.first());
}

QList<int> uctListView::selectedIds() const {
    QList<QModelIndex> indexes = selectionModel() ? selectionModel()->selectedRows() : QList<QModelIndex>();
    std::sort(indexes.begin(), indexes.end());
    QList<int> ids;
    for (const QModelIndex& index : indexes) ids << index.data(ListModel::IdRole).toInt();
    return ids;
}

void uctListView::selectIds(const QList<int>& ids) {
    std::vector<int> shown;
    for (const int id : ids)
        if (const QModelIndex index = indexOf(id); index.isValid()) shown.push_back(index.row());
    std::ranges::sort(shown);
    // Neighbours become one range: the time that a selection takes grows with the square of its ranges.
    QItemSelection selection;
    const int lastColumn = m_model->columnCount() - 1;
    for (std::size_t first = 0, next = 1; first < shown.size(); first = next++) {
        while (next < shown.size() && shown[next] == shown[next - 1] + 1) ++next;
        selection.append(QItemSelectionRange(m_order->index(shown[first], 0),
                                             m_order->index(shown[next - 1], lastColumn)));
    }
    selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
    if (!shown.empty()) // where the arrow keys go on from
        selectionModel()->setCurrentIndex(m_order->index(shown.front(), 0), QItemSelectionModel::NoUpdate);
}

/// As shown; invalid when it is not.
QModelIndex uctListView::indexOf(int id) const {
    const int row = m_model->rowOf(id);
    return row < 0 ? QModelIndex() : m_order->mapFromSource(m_model->index(row, 0));
}

void uctListView::showId(int id) {
    if (const QModelIndex index = indexOf(id); index.isValid()) scrollTo(index);
}

bool uctListView::selectId(int id) {
    const QModelIndex index = indexOf(id);
    if (!index.isValid()) return false;
    selectAlone(*this, index);
    return true;
}

QString uctListView::textOf(int id, int column) const {
    const int row = m_model->rowOf(id);
    return row < 0 ? QString() : m_model->rows()[std::size_t(row)].text(column);
}

void uctListView::sortBy(int column, bool keepOrder) {
    Qt::SortOrder order = Qt::AscendingOrder;
    if (m_order->sortColumn() == column) {
        order = m_order->sortOrder();
        if (!keepOrder) order = order == Qt::AscendingOrder ? Qt::DescendingOrder : Qt::AscendingOrder;
    }
    m_order->sort(column, order);
    header()->setSortIndicator(column, order); // kept with the layout
    header()->setSortIndicatorShown(true);
    setAccessibleDescription("Sorted by " + m_model->columnList()[std::size_t(column)].caption
                             + (order == Qt::AscendingOrder ? ", upwards" : ", downwards"));
    header()->viewport()->update();
}

void uctListView::sortAtFirst(int column) {
    if (sortedColumn() < 0) sortBy(column, true);
}

void uctListView::keyPressEvent(QKeyEvent* event) {
    const std::optional<int> id = selectedId();
    if (event->key() == Qt::Key_Delete) {
        emit deletePressed();
    } else if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && id) {
        emit rowActivated(*id);
    } else {
        QTreeView::keyPressEvent(event);
    }
}

void uctListView::mouseDoubleClickEvent(QMouseEvent* event) {
    const QModelIndex index = indexAt(event->position().toPoint());
    if (!index.isValid() || event->button() != Qt::LeftButton) return;
    selectAlone(*this, index);
    emit rowActivated(index.data(ListModel::IdRole).toInt());
}

void uctListView::paintEvent(QPaintEvent* event) {
    QTreeView::paintEvent(event);
    if (!m_order || m_order->rowCount() > 0) return;
    QPainter painter(viewport());
    painter.setPen(Palette::subtleText());
    const QString text = m_model->rowCount() > 0 ? "No row holds the words typed above." : m_emptyText;
    painter.drawText(viewport()->rect().adjusted(12, 12, -12, -12), Qt::AlignCenter | Qt::TextWordWrap, text);
}

void uctListView::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) {
    QTreeView::selectionChanged(selected, deselected);
    emit selectedIdChanged();
}

void ListViewColumnSort(uctListView& list, int column, bool keepOrder) {
    list.sortBy(column, keepOrder);
}

void ListViewUnselect(uctListView& list) {
    list.selectionModel()->clearSelection();
}
