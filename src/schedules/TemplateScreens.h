#pragma once

#include "ui/ScreenContext.h"

class QString;
class QWidget;

/// Opens the template editor over `caller`, which is called back by its slot CalledBack when the
/// editor closes; the ID -1 makes a new template. `failure` is shown when the template cannot be
/// loaded. Returns whether the editor was opened.
bool openTemplateEditor(ScreenContext& context, QWidget* caller, int templateId, const QString& failure);
/// The same for the cost-centre sub-project screen.
bool openSubProjects(ScreenContext& context, QWidget* caller, int templateId, const QString& failure);
