#pragma once

#include <QString>

struct Session;

/// Makes a project the session's current one, under the name that the server has for it, with the checks that
/// the screens make. Throws CommandFailure with what stands against it.
void openProjectFor(Session& session, const QString& name);
