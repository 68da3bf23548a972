#pragma once

#include "ui/CheckListModel.h"

#include <QWidget>

class QLabel;
class QTreeView;
class uctFilterBox;

/// A list of entries to tick: a search box that narrows it, "All" and "None" for the entries shown,
/// and how many are ticked. Space ticks the current entry.
class uctCheckList : public QWidget {
    Q_OBJECT

public:
    explicit uctCheckList(QWidget* parent = nullptr);

    /// Shows a header with these columns; without a call there is one column and no header.
    void setColumns(std::vector<ListColumn> columns);
    /// What the empty list says in its middle.
    void setEmptyText(const QString& text);
    void setEntries(std::vector<CheckListEntry> entries, const QStringList& tickedKeys);
    /// Entries whose text is their key. Ticked keys that are not among them come first.
    void setTexts(const QStringList& texts, const QStringList& ticked);
    QStringList tickedKeys() const { return m_model->tickedKeys(); } ///< in list order
    int count() const { return m_model->count(); }

signals:
    void changed(); ///< the user ticked or unticked something

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void fitColumns();
    void showCount();

    CheckListModel* m_model;
    uctFilterBox* m_search;
    QTreeView* m_list;
    QLabel* m_count;
    QLabel* m_empty;
    QString m_emptyText;
};
