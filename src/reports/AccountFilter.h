#pragma once

/// Which accounts a report covers; the codes are stored in the database.
enum AccountFilter {
    SeveralCostCentreLevels = 0,
    OneServiceNumber = 1, ///< for private circuits: one circuit
    AllAccounts = 2,
    CostCentreLevel1 = 3, ///< up to 7 for level 5
    CostCentreLevel5 = 7,
    RestrictedSelection = 8, ///< only some call reports accept it, see reportAcceptsRestrictedSelection()
};
