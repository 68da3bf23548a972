#pragma once

#include <QDialog>

class QTextBrowser;

/// The manual, shown inside the program.
class frmHelp : public QDialog {
    Q_OBJECT

public:
    explicit frmHelp(QWidget* parent);

private:
    QTextBrowser* m_pages;
};

/// Opens the compiled help file of the folder where it is there and the system can open it, else the
/// manual.
void showHelp(const QString& appFolder, QWidget* parent);
