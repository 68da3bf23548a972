#pragma once

#include "ui/Cursors.h"
#include "ui/Messages.h"
#include "ui/ScreenContext.h"

#include <QWidget>
#include <memory>

/// Sets a child screen up and shows it modally; when it closes, `caller`'s slot CalledBack is invoked.
/// A screen that cannot be set up is not shown: `failure` is told instead. The closed screen, to be asked for
/// what came of it; null when it was not shown.
template <class Screen, class... SetupArguments>
std::unique_ptr<Screen> openScreen(ScreenContext& context, QWidget* caller, const QString& failure,
                                   SetupArguments... arguments) {
    auto screen = std::make_unique<Screen>(context, caller);
    int result = 0;
    {
        WaitCursor wait;
        result = screen->Setup(arguments...);
    }
    if (result != 0) {
        context.messages.notice(caller, failure, Messages::Plain, {}, screen->loadProblem());
        return nullptr;
    }
    screen->SetCallback(caller, "Calledback");
    screen->exec();
    return screen;
}
