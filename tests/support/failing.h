#pragma once

#include "support/FaultyServer.h"

/// Carries an action out while the given step of its connection fails; true when it got through all the same.
template <class Action>
bool survives(Fault& fault, int step, const Action& action) {
    fault.arm(step);
    bool done = true;
    try {
        action();
    } catch (const DbError&) {
        done = false;
    }
    fault.arm(0);
    return done;
}
