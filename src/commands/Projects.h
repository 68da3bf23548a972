#pragma once

#include <QString>

struct Session;

/// What a project is opened for: a look changes nothing in it, while use makes the repair of its bills that
/// every choice of a project on screen makes.
enum class ProjectUse { Look, Use };

/// Makes a project the session's current one, under the name that the server has for it, with the checks that
/// the screens make. Throws CommandFailure with what stands against it.
void openProjectFor(Session& session, const QString& name, ProjectUse use = ProjectUse::Use);
/// The same for one that is chosen now: it has to be among those that the screens offer.
void openOfferedProject(Session& session, const QString& name, ProjectUse use = ProjectUse::Use);
