#include "ui/MessageBoxes.h"

#include "ui/Cursors.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QGridLayout>
#include <QInputDialog>
#include <QLabel>
#include <QMessageBox>

namespace {

const QString shortTitle = "Zelvan Scheduler";

/// The box takes its width from the text alone, and has no format for what stands below it.
void addDetails(QMessageBox& box, const QString& details) {
    box.setInformativeText(details);
    if (auto* label = box.findChild<QLabel*>("qt_msgbox_informativelabel"))
        label->setTextFormat(Qt::PlainText);
    if (auto* grid = qobject_cast<QGridLayout*>(box.layout()))
        grid->addItem(new QSpacerItem(box.fontMetrics().averageCharWidth() * 60, 0), grid->rowCount(), 0, 1,
                      grid->columnCount());
}

int show(QWidget* parent, const QString& text, QMessageBox::Icon icon, const QString& title,
         QMessageBox::StandardButtons buttons, const QString& details = {}) {
    while (parent && !parent->isVisible()) parent = parent->parentWidget(); // the box would stand in a corner
    const QString lines = QString(text).replace("\r\n", "\n").replace('\r', '\n');
    QMessageBox box(icon, title.isEmpty() ? shortTitle : title, lines, buttons, parent);
    box.setTextInteractionFlags(Qt::TextSelectableByMouse); // for a mail to whoever can help
    if (buttons & QMessageBox::No)
        box.setDefaultButton(QMessageBox::No); // Enter alone must not delete anything
    box.setTextFormat(Qt::PlainText);          // titles that users typed are no markup
    if (!details.isEmpty()) addDetails(box, details);
    // The hourglass belongs to the work, not to the question in its middle.
    NormalCursor pointer;
    return box.exec();
}

/// The entries of a filter, each shown as given. To the desktop's dialog its last bracket is the pattern, and
/// "*.*" asks for a dot there.
QString asPatterns(const QString& filter) {
    QStringList entries = filter.split(";;");
    for (QString& entry : entries) {
        const QString pattern = entry.mid(entry.lastIndexOf('('));
        entry += ' ' + (pattern == "(*.*)" ? "(*)" : pattern);
    }
    return entries.join(";;");
}

} // namespace

void MessageBoxes::notice(QWidget* parent, const QString& text, Icon icon, const QString& title,
                          const QString& details) {
    // What has details went wrong.
    const bool failed = icon == Plain && !details.isEmpty();
    show(parent, text, failed ? QMessageBox::Warning : QMessageBox::Information, title, QMessageBox::Ok,
         details);
}

bool MessageBoxes::ask(QWidget* parent, const QString& text, Icon icon, const QString& title) {
    return show(parent, text, icon == Information ? QMessageBox::Information : QMessageBox::Question, title,
                QMessageBox::Yes | QMessageBox::No)
           == QMessageBox::Yes;
}

std::optional<QString> MessageBoxes::input(QWidget* parent, const QString& prompt, const QString& text) {
    QInputDialog dialog(parent);
    dialog.setObjectName("QInputDialog");
    dialog.setWindowTitle(shortTitle);
    dialog.setLabelText(prompt);
    dialog.setTextValue(text);
    dialog.setMinimumWidth(dialog.fontMetrics().averageCharWidth() * 60);
    NormalCursor pointer;
    return dialog.exec() == QDialog::Accepted ? std::optional(dialog.textValue()) : std::nullopt;
}

QString MessageBoxes::openFile(QWidget* parent, const QString& folder, const QString& filter) {
    return QDir::toNativeSeparators(QFileDialog::getOpenFileName(
        parent, {}, folder, asPatterns(filter), nullptr, QFileDialog::HideNameFilterDetails));
}

QString MessageBoxes::saveFile(QWidget* parent, const QString& suggested, const QString& filter,
                               QString& chosen) {
    return QDir::toNativeSeparators(
        QFileDialog::getSaveFileName(parent, {}, suggested, asPatterns(filter), &chosen,
                                     QFileDialog::DontConfirmOverwrite | QFileDialog::HideNameFilterDetails));
}
