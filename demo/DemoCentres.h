#pragma once

#include "demo/DemoProject.h"

#include <array>
#include <optional>

class Connection;

/// A telephone number of a customer with the cost centres that it belongs to.
struct DemoNumber {
    QString telNo;
    QString extension;
    QString sourceAccount;
    std::array<std::optional<QString>, 5> centres; ///< levels 1 to 5, each empty, NULL or a name
};

namespace demoCentres {

/// The numbers of a project's account, always the same.
QList<DemoNumber> numbers(const DemoProject& project);
/// Makes the account's two master tables in the database CostCentres.
void createMasters(Connection& connection, const DemoProject& project);
/// Makes the allocation inside the project's own database.
void createAllocation(Connection& connection, const DemoProject& project);

} // namespace demoCentres
