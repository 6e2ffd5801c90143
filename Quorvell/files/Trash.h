// SPDX-License-Identifier: MIT
// The desktop's waste basket, from which the user can take a file back.
#pragma once

#include <string>

namespace quorvell {

/// Called on the file worker.
class Trash {
public:
    virtual ~Trash() = default;

    /// False when the file cannot be put there; it is then where it was.
    [[nodiscard]] virtual bool put(const std::string& path) = 0;
};

} // namespace quorvell
