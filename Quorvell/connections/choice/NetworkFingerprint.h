// SPDX-License-Identifier: MIT
// Tells one network from another, well enough to remember something about it: a short text from the way out (device and
// gateway), and nothing that names the network.
#pragma once

#include <string>
#include <string_view>

namespace quorvell {

/// Empty without a way out.
struct NetworkFingerprint {
    /// Of the network that this computer is in now.
    static std::string current();
    /// From the kernel's table of routes (/proc/net/route).
    static std::string of(std::string_view routes);
};

} // namespace quorvell
