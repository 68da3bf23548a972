#include "ui/SlotGuard.h"

#include "app/Session.h"
#include "db/DbError.h"
#include "ui/Messages.h"

#include <QString>

namespace {

void tell(const ScreenContext& context, QWidget* screen, const DbError& error) {
    if (error.connectionLost())
        context.messages.notice(screen,
                                "The connection to the server was lost. Nothing that you entered is lost: "
                                "please try again when the server can be reached.",
                                Messages::Plain, {}, error.text());
    else if (error.number() == DbError::LockTimeout)
        context.messages.notice(screen,
                                "Another program is changing the same data. Please try again in a moment.",
                                Messages::Plain, {}, error.text());
    else
        context.messages.notice(screen, error.text());
}

} // namespace

bool guarded(const ScreenContext& context, QWidget* screen, const char* slot, const std::function<void()>& body) {
    try {
        body();
        return true;
    } catch (const DbError& error) {
        context.session.log.write(slot, error);
        tell(context, screen, error);
    } catch (const std::exception& error) {
        context.session.log.write(slot, 1, QString::fromUtf8(error.what()));
        context.messages.notice(screen, QString("The action could not be completed: %1").arg(error.what()));
    }
    return false;
}
