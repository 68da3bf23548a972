#include "schedules/uctProjectHistory.h"

#include "schedules/ProjectHistory.h"
#include "ui/DateCell.h"

uctProjectHistory::uctProjectHistory(QWidget* parent) : uctListView(parent) {
    setColumns({{"Project", ListColumn::Text, 45}, {"Last used"}}, "ProjectHistory");
    setEmptyText("The projects that you choose are kept here.");
    // It gives way first where the screen is small.
    setMinimumHeight(fontMetrics().height() * 6);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Ignored);
    connect(this, &uctListView::rowActivated, this, &uctProjectHistory::choose);
    connect(this, &QTreeView::clicked, this,
            [this](const QModelIndex& index) { choose(index.data(ListModel::IdRole).toInt()); });
}

void uctProjectHistory::fill(const Session& session) {
    std::vector<ListRow> rows;
    for (const projectHistory::Entry& entry : projectHistory::read(session))
        rows.push_back({int(rows.size()), {entry.project, dateCell(entry.lastUsed.shown(), entry.lastUsed)}});
    setRows(std::move(rows));
}
