#include "ui/ScreenDialog.h"

#include "base/Session.h"
#include "base/SettingsStore.h"
#include "db/DbError.h"
#include "ui/ReadingOrder.h"
#include "ui/SlotGuard.h"
#include "ui/frmHelp.h"

#include <QScreen>
#include <QShortcut>
#include <QShowEvent>

namespace {

constexpr const char* sizesSection = "Sizes";

} // namespace

ScreenDialog::ScreenDialog(ScreenContext& context, QWidget* parent) : QDialog(parent), m_context(context) {
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    connect(new QShortcut(QKeySequence::HelpContents, this), &QShortcut::activated, this,
            [this] { showHelp(session().paths.AppFolder(), this); });
}

bool ScreenDialog::load(const std::function<void()>& body, const SlotName& setup) {
    try {
        body();
        return true;
    } catch (const DbError& error) {
        session().log.write(setup.text(), error);
        m_loadProblem = inWords(error);
    } catch (const std::exception& error) {
        session().log.write(setup.text(), 1, QString::fromUtf8(error.what()));
        m_loadProblem = QString::fromUtf8(error.what());
    }
    return false;
}

/// As large as its user left it, as far as the desktop has room.
void ScreenDialog::showEvent(QShowEvent* event) {
    if (!event->spontaneous() && m_shownSize.isEmpty()) {
        const QStringList stored = getSetting("VWT", sizesSection, objectName(), "").split('x');
        const QSize former(stored.value(0).toInt(), stored.value(1).toInt());
        if (!former.isEmpty()) resize(former.boundedTo(screen()->availableSize() * 0.95));
        m_shownSize = size();
        putInReadingOrder(*this);
    }
    QDialog::showEvent(event);
}

void ScreenDialog::reject() {
    if (!mayClose()) return;
    tellsWhenCancelled() ? callBackAndClose() : QDialog::reject();
}

/// A desktop that is still giving the keyboard back from a notice to this screen loses it with the screen.
void ScreenDialog::done(int result) {
    if (isVisible() && !isMaximized() && size() != m_shownSize)
        saveSetting("VWT", sizesSection, objectName(), QString("%1x%2").arg(width()).arg(height()));
    QDialog::done(result);
    if (parentWidget()) parentWidget()->activateWindow();
}

void ScreenDialog::callBackAndClose() {
    QDialog::accept();
    m_callback.invoke();
}
