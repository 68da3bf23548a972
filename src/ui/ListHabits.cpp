#include "ui/ListHabits.h"

#include <QAbstractItemView>
#include <QAction>
#include <QClipboard>
#include <QFocusEvent>
#include <QGuiApplication>
#include <algorithm>

namespace {

/// A line break or a tab within a cell would break the row that is pasted.
QString inOneLine(QString text) {
    return text.replace('\r', ' ').replace('\n', ' ').replace('\t', ' ');
}

QList<int> rowsToCopy(const QAbstractItemView& list) {
    QList<int> rows;
    for (const QModelIndex& index : list.selectionModel()->selectedIndexes()) rows << index.row();
    if (rows.isEmpty())
        for (int row = 0; row < list.model()->rowCount(); ++row) rows << row;
    std::ranges::sort(rows); // in the order shown
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    return rows;
}

void copyRows(const QAbstractItemView& list) {
    const QAbstractItemModel& model = *list.model();
    QStringList lines;
    for (const int row : rowsToCopy(list)) {
        QStringList cells;
        for (int column = 0; column < model.columnCount(); ++column)
            cells << inOneLine(model.index(row, column).data().toString());
        lines << cells.join('\t');
    }
    QGuiApplication::clipboard()->setText(lines.join('\n'));
}

class KeyboardArrival : public QObject {
public:
    using QObject::QObject;

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() != QEvent::FocusIn) return false;
        const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
        if (reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason
            || reason == Qt::ShortcutFocusReason)
            selectCurrentRow(*static_cast<QAbstractItemView*>(watched));
        return false;
    }
};

} // namespace

void giveListHabits(QAbstractItemView& list) {
    auto* copy = new QAction("Copy", &list);
    copy->setShortcut(QKeySequence::Copy);
    copy->setShortcutContext(Qt::WidgetShortcut);
    QObject::connect(copy, &QAction::triggered, &list, [&list] { copyRows(list); });
    list.addAction(copy);
    list.setContextMenuPolicy(Qt::ActionsContextMenu);
    list.installEventFilter(new KeyboardArrival(&list));
}

void selectCurrentRow(QAbstractItemView& list) {
    QItemSelectionModel* selection = list.selectionModel();
    if (!selection || selection->hasSelection() || list.model()->rowCount() == 0) return;
    const QModelIndex current =
        list.currentIndex().isValid() ? list.currentIndex() : list.model()->index(0, 0);
    selectAlone(list, current);
}

void selectAlone(QAbstractItemView& list, const QModelIndex& index) {
    list.selectionModel()->setCurrentIndex(index,
                                           QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    list.scrollTo(index);
}
