#pragma once

#include <QString>

/// The folder of the program "Quorra Zelvan" with all that the Scheduler needs beside itself.
namespace demoApplication {

/// Adds what is missing: a stand-in for the analysis product's program, the database scripts and the
/// security file with the password of the demo server's login. Throws std::runtime_error.
void create(const QString& folder);

} // namespace demoApplication
