#pragma once

#include "templates/TemplateHeader.h"

#include <QList>

struct Session;

/// Why a project cannot be used, in words for the user; empty when its bills can be read. Throws
/// DbError when the server itself cannot be reached.
QString projectProblem(Session& session, const QString& database);
/// The templates made for a bill account, ordered by title.
QList<TemplateHeader> templatesOfAccount(Session& session, const QString& account);
