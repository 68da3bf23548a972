#pragma once

/// As the users' support knows it.
inline constexpr auto programVersion = "10.0.1Q";
