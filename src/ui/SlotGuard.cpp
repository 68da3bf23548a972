#include "ui/SlotGuard.h"

#include "app/Session.h"
#include "db/DbError.h"
#include "ui/Messages.h"

#include <QString>

namespace {

void tell(const ScreenContext& context, QWidget* screen, const DbError& error, const QString& headline) {
    const auto notice = [&](const QString& text, const QString& details) {
        // What the program itself refuses says enough.
        if (headline.isEmpty() || error.number() == 0 || error.number() == DbError::TextTooLong)
            context.messages.notice(screen, text, Messages::Plain, {}, details);
        else
            context.messages.notice(screen, headline, Messages::Plain, {}, text);
    };
    if (error.connectionLost())
        notice("The connection to the server was lost. Nothing that you entered is lost: "
               "please try again when the server can be reached.",
               error.text());
    else if (error.number() == DbError::LockTimeout)
        notice("Another program is changing the same data. Please try again in a moment.", error.text());
    else
        notice(error.text(), {});
}

} // namespace

bool guarded(const ScreenContext& context, QWidget* screen, const char* slot,
             const std::function<void()>& body, const QString& headline) {
    try {
        body();
        return true;
    } catch (const DbError& error) {
        context.session.log.write(slot, error);
        tell(context, screen, error, headline);
    } catch (const std::exception& error) {
        context.session.log.write(slot, 1, QString::fromUtf8(error.what()));
        context.messages.notice(screen, QString("The action could not be completed: %1").arg(error.what()));
    }
    return false;
}
