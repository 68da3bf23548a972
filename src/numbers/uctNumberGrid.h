#pragma once

#include "numbers/NumberTable.h"
#include "ui/ScreenContext.h"

#include <QWidget>

class QLabel;
class QLineEdit;
class QListView;
class QProgressBar;
class QStringListModel;

/// The grid of a screen that edits a list of telephone numbers: a box to type numbers into, the
/// numbers below it, and the list's way from and to files.
class uctNumberGrid : public QWidget {
    Q_OBJECT

public:
    explicit uctNumberGrid(QWidget* parent = nullptr);

    /// What the grid shows and changes; all of it must outlive the grid. `screen` names the screen in
    /// the error log.
    void attach(ScreenContext& context, NumberTable& table, const QString& screen);
    void setHint(const QString& hint);
    /// Reads the table anew.
    void refresh();
    QStringList numbers() const;
    /// Whether these are the numbers shown, in whatever order.
    bool holdsJust(QStringList others) const;
    QStringList selectedNumbers() const;
    /// Whether something stands in the box that is not in the list yet.
    bool hasTyped() const;
    /// Adds the numbers in the box, one on each line. What is refused stays there and is told: then
    /// false.
    bool takeTyped();
    /// Shows how far the writing of many numbers is, and keeps the screen painted.
    NumberTable::Progress progress();

    /// Asks for a file and reads it: see ReadCalledNos.
    void loadFile();
    /// Replaces the list by the file's numbers and tells of those left out. A file that holds none, or
    /// cannot be read, leaves the list as it was.
    void ReadCalledNos(const QString& path);
    /// Asks for a file and writes the list into it, one number on each line.
    void saveFile();

signals:
    void selectionChanged();
    void numberAdded(const QString& number); ///< of several, the last
    void deletePressed();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void cmdAdd_Click();
    bool addTyped();
    void append(const QStringList& numbers);
    void showCount();

    ScreenContext* m_context = nullptr;
    NumberTable* m_table = nullptr;
    QByteArray m_screen;
    QLineEdit* m_number;
    QListView* m_grid;
    QStringListModel* m_model;
    QLabel* m_hint;
    QLabel* m_count;
    QProgressBar* m_progress;
};
