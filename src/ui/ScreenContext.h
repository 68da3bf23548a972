#pragma once

struct Session;
class Messages;

/// What every screen is given: the run's session and the way to talk to the user. Both outlive it.
struct ScreenContext {
    Session& session;
    Messages& messages;
};
