#include "ui/frmHelp.h"

#include "ui/WindowSize.h"
#include "ui/uctHeader.h"

#include <QDesktopServices>
#include <QDialogButtonBox>
#include <QDir>
#include <QFile>
#include <QPushButton>
#include <QTextBrowser>
#include <QUrl>
#include <QVBoxLayout>

static void loadManual() {
    Q_INIT_RESOURCE(manual); // not found by itself in a static library
}

frmHelp::frmHelp(QWidget* parent) : QDialog(parent), m_pages(new QTextBrowser(this)) {
    loadManual();
    setObjectName("frmHelp");
    setWindowTitle("Scheduler help");
    auto* header = new uctHeader(this);
    header->setTitle("Help");
    m_pages->setObjectName("txtManual");
    m_pages->setAccessibleName("Manual");
    m_pages->setFrameShape(QFrame::NoFrame);
    m_pages->document()->setDocumentMargin(16);
    m_pages->setSource(QUrl("qrc:/manual/index.md"), QTextDocument::MarkdownResource);
    auto* buttons = new QDialogButtonBox(this);
    auto* contents = buttons->addButton("&Contents", QDialogButtonBox::ActionRole);
    buttons->addButton(QDialogButtonBox::Close);
    connect(contents, &QAbstractButton::clicked, m_pages, &QTextBrowser::home);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(header);
    layout->addWidget(m_pages);
    auto* foot = new QVBoxLayout;
    foot->setContentsMargins(12, 8, 12, 8);
    foot->addWidget(buttons);
    layout->addLayout(foot);
    resizeToText(*this, 110, 36);
}

void showHelp(const QString& appFolder, QWidget* parent) {
    const QString compiled = QDir(appFolder).filePath("Norva Quorra Zelvan Scheduler.chm");
    if (QFile::exists(compiled) && QDesktopServices::openUrl(QUrl::fromLocalFile(compiled))) return;
    frmHelp(parent).exec();
}
