#include "ui/SlotGuard.h"

#include "base/Session.h"
#include "db/DbError.h"
#include "db/Refusal.h"
#include "ui/Messages.h"

#include <QLabel>

QString inWords(const DbError& error) {
    if (error.connectionLost())
        return "The connection to the server was lost. Nothing that you entered is lost: "
               "please try again when the server can be reached.";
    if (error.number() == DbError::LockTimeout)
        return "Another program is changing the same data. Please try again in a moment.";
    return error.text();
}

namespace {

void tell(const ScreenContext& context, QWidget* screen, const DbError& error, const QString& headline) {
    const QString words = inWords(error);
    const QString serversWords = words == error.text() ? QString() : error.text();
    if (headline.isEmpty())
        context.messages.notice(screen, words, Messages::Plain, {}, serversWords);
    else
        context.messages.notice(screen, headline, Messages::Plain, {}, words);
}

/// Its label and the refusal use the same words.
void focusField(QWidget* screen, const QString& field) {
    if (!screen || field.isEmpty()) return;
    for (const QLabel* label : screen->findChildren<QLabel*>())
        if (label->buddy() && QString(label->text()).remove('&').compare(field, Qt::CaseInsensitive) == 0)
            return label->buddy()->setFocus();
}

} // namespace

bool guarded(const ScreenContext& context, QWidget* screen, const char* slot,
             const std::function<void()>& body, const QString& headline) {
    try {
        body();
        return true;
    } catch (const Refusal& refusal) {
        context.session.log.write(slot, 1, refusal.text());
        context.messages.notice(screen, refusal.text());
        focusField(screen, refusal.field());
    } catch (const DbError& error) {
        context.session.log.write(slot, error);
        tell(context, screen, error, headline);
    } catch (const std::exception& error) {
        context.session.log.write(slot, 1, QString::fromUtf8(error.what()));
        context.messages.notice(screen, QString("The action could not be completed: %1").arg(error.what()));
    }
    return false;
}
