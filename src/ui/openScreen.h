#pragma once

#include "ui/Cursors.h"
#include "ui/Messages.h"
#include "ui/ScreenContext.h"

#include <QWidget>

/// Sets a child screen up and shows it modally; when it closes, `caller`'s slot CalledBack is invoked.
/// A screen that cannot be set up is not shown: `failure` is told instead. Returns whether it was shown.
template <class Screen, class... SetupArguments>
bool openScreen(ScreenContext& context, QWidget* caller, const QString& failure,
                SetupArguments... arguments) {
    Screen screen(context, caller);
    int result = 0;
    {
        WaitCursor wait;
        result = screen.Setup(arguments...);
    }
    if (result != 0) {
        context.messages.notice(caller, failure, Messages::Plain, {}, screen.loadProblem());
        return false;
    }
    screen.SetCallback(caller, "Calledback");
    screen.exec();
    return true;
}
