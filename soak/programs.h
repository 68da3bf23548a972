#pragma once

class QApplication;
class QString;

namespace soak {

/// Saves and deletes templates and schedules without a pause, by the program's own models, until it is
/// killed. The folder is that of Soak.
int runSaver(QApplication& application, const QString& folder, const QString& name);

/// The program's windows, with a user who opens and leaves screens, until it is killed.
int runScreens(QApplication& application, const QString& folder);

} // namespace soak
