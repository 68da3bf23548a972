#pragma once

#include "demo/DemoProject.h"

class Connection;

namespace demoProjectDatabase {

/// Makes the project's database, empty. CREATE DATABASE takes no part in a transaction.
void create(Connection& connection, const DemoProject& project);
/// Makes its tables and fills them, with `calls` calls.
void fill(Connection& connection, const DemoProject& project, int calls, const QDate& today);

} // namespace demoProjectDatabase
