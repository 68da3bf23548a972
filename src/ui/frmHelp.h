#pragma once

#include <QDialog>

class QLabel;
class QLineEdit;
class QTextBrowser;

/// The manual, shown beside the program: its screens go on while it is open.
class frmHelp : public QDialog {
    Q_OBJECT

public:
    explicit frmHelp(QWidget* parent);

    /// Turns to the page about a screen, by the screen's name; to the contents when there is none.
    void showPageOf(const QString& screen);

private:
    void findNext();

    QTextBrowser* m_pages;
    QLineEdit* m_words;
    QLabel* m_answer;
};

/// Opens the compiled help file of the folder where it is there and the system can open it, else the
/// manual at the page about the screen that asks.
void showHelp(const QString& appFolder, QWidget* screen);
