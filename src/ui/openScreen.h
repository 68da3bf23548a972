#pragma once

#include "ui/Cursors.h"
#include "ui/Messages.h"
#include "ui/ScreenContext.h"

#include <QWidget>
#include <memory>

/// A child screen, set up and not shown yet; null, and `failure` is told, when it cannot be.
template <class Screen, class... SetupArguments>
std::unique_ptr<Screen> setUpScreen(ScreenContext& context, QWidget* caller, const QString& failure,
                                    SetupArguments&&... arguments) {
    auto screen = std::make_unique<Screen>(context, caller);
    int result = 0;
    {
        WaitCursor wait;
        result = screen->Setup(std::forward<SetupArguments>(arguments)...);
    }
    if (result == 0) return screen;
    context.messages.notice(caller, failure, Messages::Plain, {}, screen->loadProblem());
    return nullptr;
}

/// Sets a child screen up and shows it modally; when it closes, `caller`'s slot CalledBack is invoked, if it
/// has one. The closed screen, to be asked for what came of it; null when it could not be set up. A caller
/// whose slot asks the screen itself keeps it: setUpScreen, SetCallback, exec.
template <class Screen, class... SetupArguments>
std::unique_ptr<Screen> openScreen(ScreenContext& context, QWidget* caller, const QString& failure,
                                   SetupArguments&&... arguments) {
    auto screen = setUpScreen<Screen>(context, caller, failure, std::forward<SetupArguments>(arguments)...);
    if (!screen) return nullptr;
    screen->SetCallback(caller, "Calledback");
    screen->exec();
    return screen;
}
