#include "schedules/TemplateScreens.h"

#include "ui/Messages.h"

bool openTemplateEditor(ScreenContext& context, QWidget* caller, int, const QString&) {
    context.messages.notice(caller, "The template editor is not part of this version yet.");
    return false;
}

bool openSubProjects(ScreenContext& context, QWidget* caller, int, const QString&) {
    context.messages.notice(caller, "The cost-centre sub-project set-up is not part of this version yet.");
    return false;
}
