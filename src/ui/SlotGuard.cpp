#include "ui/SlotGuard.h"

#include "base/Session.h"
#include "db/DbError.h"
#include "db/Refusal.h"
#include "ui/Messages.h"

#include <QLabel>
#include <QRegularExpression>

namespace {

/// The server has undone what was begun, because of what others do at the same moment.
bool isOthersLock(const DbError& error) {
    return error.number() == DbError::LockTimeout || error.number() == DbError::Deadlock;
}

} // namespace

QString inWords(const DbError& error) {
    if (error.number() == DbError::Stopped)
        return "You have stopped waiting for the server. What was begun there is undone; nothing that you "
               "entered is lost.";
    if (error.number() == DbError::StoppedCommit)
        return "You have stopped waiting for the server while it was saving. Whether the change was carried "
               "out is not known: please look before you try again. Nothing that you entered is lost.";
    if (error.connectionLost())
        return "The connection to the server was lost. Nothing that you entered is lost: "
               "please try again when the server can be reached.";
    if (isOthersLock(error))
        return "Another program is changing the same data. Please try again in a moment.";
    return error.text();
}

namespace {

const QString lockedQuestion = "Another program is changing the same data.\n\nDo you want to try again?";

void tell(const ScreenContext& context, QWidget* screen, const DbError& error, const QString& headline) {
    const QString words = inWords(error);
    const bool stopped = error.number() == DbError::Stopped || error.number() == DbError::StoppedCommit;
    const bool saysMore = words != error.text() && !stopped;
    const QString serversWords = saysMore ? error.text() : QString();
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

SlotName::SlotName(const std::source_location& where) {
    // "void frmTemplate::cmdDelete_Click()", with the lambda's own name behind it inside of one
    static const QRegularExpression routine("(\\w+)::(\\w+)\\(");
    const auto match = routine.match(QString::fromLatin1(where.function_name()));
    m_name = match.captured(1) + '.' + match.captured(2);
}

bool guarded(const ScreenContext& context, QWidget* screen, const std::function<void()>& body,
             const QString& headline, const SlotName& slot) {
    for (;;) {
        try {
            body();
            return true;
        } catch (const Refusal& refusal) {
            context.session.log.write(slot.text(), 1, refusal.text());
            context.messages.notice(screen, refusal.text());
            focusField(screen, refusal.field());
            return false;
        } catch (const DbError& error) {
            context.session.log.write(slot.text(), error);
            if (!isOthersLock(error)) {
                tell(context, screen, error, headline);
                return false;
            }
            if (!context.messages.ask(screen, lockedQuestion)) return false;
        } catch (const std::exception& error) {
            context.session.log.write(slot.text(), 1, QString::fromUtf8(error.what()));
            context.messages.notice(screen,
                                    QString("The action could not be completed: %1").arg(error.what()));
            return false;
        }
    }
}
