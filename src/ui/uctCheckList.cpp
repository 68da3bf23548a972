#include "ui/uctCheckList.h"

#include "db/ServerText.h"
#include "ui/AllNone.h"
#include "ui/Icons.h"
#include "ui/Labels.h"
#include "ui/ListHabits.h"
#include "ui/Palette.h"
#include "ui/uctFilterBox.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLocale>
#include <QSet>
#include <QTreeView>
#include <QVBoxLayout>

namespace {

QLabel* subtleLabel(QWidget* parent) {
    auto* label = new QLabel(parent);
    setTextColour(*label, Palette::subtleText());
    return label;
}

} // namespace

uctCheckList::uctCheckList(QWidget* parent)
    : QWidget(parent),
      m_model(new CheckListModel(this)),
      m_search(new uctFilterBox(this)),
      m_list(new QTreeView(this)),
      m_count(subtleLabel(this)),
      m_empty(subtleLabel(m_list->viewport())) {
    m_search->setObjectName("txtSearch");
    m_search->setPlaceholderText("Search");
    m_search->setAccessibleName("Search the list");
    m_search->addAction(icon("edit-find"), QLineEdit::LeadingPosition);
    m_search->installEventFilter(this);

    auto* bar = new QHBoxLayout;
    bar->addWidget(m_search, 1);
    addAllNone(this, *bar, "entry shown", [this](bool ticks) { m_model->tickShown(ticks); });

    m_list->setObjectName("lstEntries");
    m_list->setModel(m_model);
    m_list->setRootIsDecorated(false);
    m_list->setUniformRowHeights(true);
    m_list->setAllColumnsShowFocus(true);
    m_list->setHeaderHidden(true);
    m_list->setAccessibleName("Entries");
    m_list->setMinimumHeight(fontMetrics().height() * 10);
    m_list->viewport()->installEventFilter(this);
    giveListHabits(*m_list);
    m_search->attach(*m_list);
    m_empty->setWordWrap(true);
    m_empty->setAlignment(Qt::AlignCenter);
    m_empty->setMargin(12);

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(6);
    column->addLayout(bar);
    column->addWidget(m_list, 1);
    column->addWidget(m_count);

    connect(m_search, &QLineEdit::textChanged, this, [this](const QString& words) {
        m_model->setFilterWords(words);
        showCount();
    });
    connect(m_model, &CheckListModel::ticksChanged, this, [this] {
        showCount();
        emit changed();
    });
    showCount();
}

void uctCheckList::setColumns(std::vector<ListColumn> columns) {
    m_model->setColumns(std::move(columns));
    m_list->setHeaderHidden(false);
    m_list->header()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    m_list->header()->setStretchLastSection(false);
}

void uctCheckList::setEmptyText(const QString& text) {
    m_emptyText = text;
    showCount();
}

void uctCheckList::setEntries(std::vector<CheckListEntry> entries, const QStringList& tickedKeys) {
    m_search->clear(); // words typed for another list would hide entries of this one
    m_model->setEntries(std::move(entries), tickedKeys);
    if (!m_list->isHeaderHidden()) fitColumns();
    if (const int row = m_model->firstTickedRow(); row > 0)
        m_list->scrollTo(m_model->index(row, 0), QAbstractItemView::PositionAtCenter);
    showCount();
}

void uctCheckList::fitColumns() {
    constexpr int rowsMeasured = 200; // measuring all of a long list would take longer than reading it
    QHeaderView& header = *m_list->header();
    header.setResizeContentsPrecision(rowsMeasured);
    header.resizeSections(QHeaderView::ResizeToContents);
    const int gap = fontMetrics().averageCharWidth() * 2;
    for (int i = 0; i < header.count(); ++i) header.resizeSection(i, header.sectionSize(i) + gap);
}

void uctCheckList::setTexts(const QStringList& texts, const QStringList& ticked) {
    QSet<QString> known;
    for (const QString& text : texts) known.insert(serverKey(text));
    std::vector<CheckListEntry> entries;
    entries.reserve(std::size_t(texts.size()));
    for (const QString& text : ticked) {
        if (known.contains(serverKey(text))) continue;
        known.insert(serverKey(text));
        entries.push_back({text, {text + "   (not in this project)"}});
    }
    for (const QString& text : texts) entries.push_back({text, {text}});
    setEntries(std::move(entries), ticked);
}

void uctCheckList::showCount() {
    const QLocale english(QLocale::English);
    m_count->setText(
        QString("%1 of %2 ticked").arg(english.toString(m_model->tickedCount()), english.toString(count())));
    m_empty->setVisible(m_model->rowCount() == 0);
    m_empty->setText(count() > 0 ? "No entry holds the words typed above." : m_emptyText);
}

bool uctCheckList::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_list->viewport() && event->type() == QEvent::Resize)
        m_empty->resize(m_list->viewport()->size());
    if (watched == m_search && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        // Enter would press the screen's default button while the user only wants to find an entry.
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            m_search->goToList();
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}
