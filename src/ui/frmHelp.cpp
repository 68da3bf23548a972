#include "ui/frmHelp.h"

#include "ui/WindowSize.h"
#include "ui/uctHeader.h"

#include <QDesktopServices>
#include <QDialogButtonBox>
#include <QDir>
#include <QFile>
#include <QHash>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QShortcut>
#include <QTextBrowser>
#include <QUrl>
#include <QVBoxLayout>

static void loadManual() {
    Q_INIT_RESOURCE(manual); // not found by itself in a static library
}

namespace {

const QString folder = ":/manual/";

QUrl pageUrl(const QString& page) {
    return QUrl("qrc" + folder + page);
}

QString pageOf(const QString& screen) {
    static const QHash<QString, QString> pages{{"frmLogin", "login"},
                                               {"frmMainScreen", "schedules"},
                                               {"frmSchedule", "schedule-editor"},
                                               {"frmSQLServerDatabases", "schedule-editor"},
                                               {"frmSeries", "planning"},
                                               {"frmChangeSchedules", "planning"},
                                               {"frmScheduleView", "log"},
                                               {"frmAgenda", "agenda"},
                                               {"frmManageTemplates", "templates"},
                                               {"frmTemplateImport", "templates"},
                                               {"frmTemplate", "templates"},
                                               {"frmReport", "reports"},
                                               {"frmSelectReports", "reports"},
                                               {"frmSelectParameters", "parameters"},
                                               {"frmBillSelection", "numbers"},
                                               {"frmRangeSel", "numbers"},
                                               {"frmExcludeNumbers", "numbers"},
                                               {"frmTransfer", "subprojects"},
                                               {"frmOptions", "email"},
                                               {"frmEmailSettings", "email"},
                                               {"frmMailImport", "email"},
                                               {"frmMailSelection", "email"}};
    return pages.value(screen, "index") + ".md";
}

} // namespace

frmHelp::frmHelp(QWidget* parent)
    : QDialog(parent),
      m_pages(new QTextBrowser(this)),
      m_words(new QLineEdit(this)),
      m_answer(new QLabel(this)) {
    loadManual();
    setObjectName("frmHelp");
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle("Scheduler help");
    auto* header = new uctHeader(this);
    header->setTitle("Help");
    m_pages->setObjectName("txtManual");
    m_pages->setAccessibleName("Manual");
    m_pages->setFrameShape(QFrame::NoFrame);
    m_pages->document()->setDocumentMargin(16);
    m_words->setObjectName("txtFind");
    m_words->setPlaceholderText("Find in the manual");
    m_words->setAccessibleName("Find in the manual");
    m_words->setClearButtonEnabled(true);
    m_answer->setObjectName("lblAnswer");
    auto* back = new QPushButton("&Back", this);
    back->setEnabled(false);
    auto* contents = new QPushButton("&Contents", this);
    auto* close = new QDialogButtonBox(QDialogButtonBox::Close, this);
    for (QPushButton* button : findChildren<QPushButton*>()) button->setAutoDefault(false); // Enter finds

    connect(m_pages, &QTextBrowser::backwardAvailable, back, &QWidget::setEnabled);
    connect(back, &QAbstractButton::clicked, m_pages, &QTextBrowser::backward);
    connect(contents, &QAbstractButton::clicked, this, [this] { m_pages->setSource(pageUrl("index.md")); });
    connect(close, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_words, &QLineEdit::returnPressed, this, &frmHelp::findNext);
    connect(new QShortcut(QKeySequence::Find, this), &QShortcut::activated, m_words,
            qOverload<>(&QWidget::setFocus));

    auto* foot = new QHBoxLayout;
    foot->setContentsMargins(12, 8, 12, 8);
    foot->addWidget(back);
    foot->addWidget(contents);
    foot->addWidget(m_words, 1);
    foot->addWidget(m_answer);
    foot->addWidget(close);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(header);
    layout->addWidget(m_pages);
    layout->addLayout(foot);
    resizeToText(*this, 110, 36);
    m_pages->setFocus();
}

void frmHelp::showPageOf(const QString& screen) {
    m_pages->setSource(pageUrl(pageOf(screen)), QTextDocument::MarkdownResource);
}

/// On this page behind the last find, then on the pages after it, and round to this one's beginning.
void frmHelp::findNext() {
    m_answer->clear();
    const QString words = m_words->text().trimmed();
    if (words.isEmpty() || m_pages->find(words)) return;
    const QStringList pages = QDir(folder).entryList({"*.md"}, QDir::Files, QDir::Name);
    const qsizetype here = pages.indexOf(m_pages->source().fileName());
    for (qsizetype i = 1; i <= pages.size(); ++i) {
        const QString& page = pages[(here + i) % pages.size()];
        QTextDocument text;
        QFile file(folder + page);
        if (!file.open(QIODevice::ReadOnly)) continue;
        text.setMarkdown(QString::fromUtf8(file.readAll()));
        if (text.find(words).isNull()) continue;
        m_pages->setSource(pageUrl(page), QTextDocument::MarkdownResource);
        m_pages->moveCursor(QTextCursor::Start);
        m_pages->find(words);
        return;
    }
    m_answer->setText("Not found");
}

void showHelp(const QString& appFolder, QWidget* screen) {
    const QString compiled = QDir(appFolder).filePath("Norva Quorra Zelvan Scheduler.chm");
    if (QFile::exists(compiled) && QDesktopServices::openUrl(QUrl::fromLocalFile(compiled))) return;
    // A child of the screen: while that is modal, no other window could be used.
    auto* help = screen->findChild<frmHelp*>(QString(), Qt::FindDirectChildrenOnly);
    if (!help) help = new frmHelp(screen);
    help->showPageOf(screen->objectName());
    help->show();
    help->raise();
    help->activateWindow();
}
